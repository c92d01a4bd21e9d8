#include "command_test.h"

namespace qmvctl::test {
namespace {

class Associations : public CommandTest {
 protected:
  Associations() { on_database({"init", "association"}); }

  void insert_one_of_each() {
    sql("insert into association values ('CIM_ElementCapabilities', 'root/cimv2', 'two', 'three', 4, "
        "'{CIM_SSHService, CIM_Service}', '{Name,SystemName}', '{Antecedent,Dependent}', '{1,2}');");
    sql("insert into association_reg values ('zero', 'one', 'two', 'three');");
  }

  void move_to_fixed_place() { std::filesystem::rename(database(), path("Association.db")); }

  const Json association_{{"class", "CIM_ElementCapabilities"},
                          {"namespace", "root/cimv2"},
                          {"text2", "two"},
                          {"text3", "three"},
                          {"flag4", 4},
                          {"list5", {"CIM_SSHService", "CIM_Service"}},
                          {"list6", {"Name", "SystemName"}},
                          {"list7", {"Antecedent", "Dependent"}},
                          {"list8", {"1", "2"}}};
  const Json plugin_{{"column0", "zero"}, {"column1", "one"}, {"column2", "two"}, {"column3", "three"}};
};

TEST_F(Associations, AreShownWithTheirLists) {
  insert_one_of_each();
  EXPECT_EQ(rows({"associations"}), Json::array({association_}));
}

TEST_F(Associations, AreATableForPeople) {
  sql("insert into association values ('CIM_A', 'root/cimv2', 'x', 'y', 4, '{a,b}', '{c,d}', '{e}', '{}');");
  EXPECT_EQ(on_database({"associations"}).out,
            "Class  Namespace   List 5  List 7\n"
            "CIM_A  root/cimv2  a, b    e\n");
  EXPECT_EQ(on_database({"associations", "--wide"}).out,
            "Class  Namespace   Text 2  Text 3  Flag 4  List 5  List 6  List 7  List 8\n"
            "CIM_A  root/cimv2  x       y            4  a, b    c, d    e\n");
}

TEST_F(Associations, ShowTheirPlugIns) {
  insert_one_of_each();
  EXPECT_EQ(rows({"associations", "plugins"}), Json::array({plugin_}));
  EXPECT_EQ(on_database({"associations", "plugins"}).out,
            "Column 0  Column 1  Column 2  Column 3\n"
            "zero      one       two       three\n");
}

TEST_F(Associations, OfTheRegistryAreShownWithoutDb) {
  insert_one_of_each();
  sql("update association set NameSpace = 'root/other';");
  Json association = association_;
  association["namespace"] = "root/other";
  move_to_fixed_place();
  EXPECT_EQ(Json::parse(run({"associations", "--json"}).out), Json::array({association}));
  EXPECT_EQ(Json::parse(run({"associations", "plugins", "--json"}).out), Json::array({plugin_}));
}

TEST_F(Associations, WithoutARowThereAreNone) {
  EXPECT_EQ(on_database({"associations"}).out, "There are no associations.\n");
  EXPECT_EQ(on_database({"associations", "plugins"}).out, "There are no plug-ins.\n");
  EXPECT_EQ(rows({"associations"}), Json::array());
  EXPECT_EQ(rows({"associations", "plugins"}), Json::array());
}

TEST_F(Associations, OfNullColumnsHaveEmptyTextsAndNoLists) {
  sql("insert into association (Flag4, List6) values (null, '{b}');");
  sql("insert into association_reg values (null, null, null, null);");
  const Json expected = {{"class", ""},      {"namespace", ""}, {"text2", ""},      {"text3", ""},     {"flag4", 0},
                         {"list5", nullptr}, {"list6", {"b"}},  {"list7", nullptr}, {"list8", nullptr}};
  EXPECT_EQ(rows({"associations"}), Json::array({expected}));
  EXPECT_EQ(rows({"associations", "plugins"}),
            Json::array({{{"column0", ""}, {"column1", ""}, {"column2", ""}, {"column3", ""}}}));
  EXPECT_EQ(on_database({"associations"}).status, 0);
}

TEST_F(Associations, OfPairsThatDifferInLengthAreComplete) {
  sql("insert into association (List5, List6, List7, List8) values ('{a}', '{b,c,d}', '{e,f,g}', '{h}'),"
      "('{a,b,c}', '{d}', '{e}', '{f,g,h}'), ('{}', '{a}', '{b}', null);");
  const Json associations = rows({"associations"});
  EXPECT_EQ(associations.at(0).at("list5"), Json({"a"}));
  EXPECT_EQ(associations.at(0).at("list6"), Json({"b", "c", "d"}));
  EXPECT_EQ(associations.at(0).at("list7"), Json({"e", "f", "g"}));
  EXPECT_EQ(associations.at(0).at("list8"), Json({"h"}));
  EXPECT_EQ(associations.at(1).at("list5"), Json({"a", "b", "c"}));
  EXPECT_EQ(associations.at(1).at("list8"), Json({"f", "g", "h"}));
  EXPECT_EQ(associations.at(2).at("list5"), Json::array());
  EXPECT_EQ(associations.at(2).at("list7"), Json({"b"}));
}

TEST_F(Associations, OfHostileTextsAreShownBoundedAndPrintable) {
  const std::string too_long(300, 'x');
  sql("insert into association (ClassName, Text2, List5) values ('A' || char(27) || '[2J', '" + too_long +
      "', '{b' || char(10) || ',' || char(7) || '}');");
  sql("insert into association_reg values ('a' || char(27), '" + too_long + "', '%n%s', x'FF');");
  const std::string table = on_database({"associations"}).out;
  EXPECT_NE(table.find("\nA.[2J "), std::string::npos) << table;
  EXPECT_NE(table.find(" b., .\n"), std::string::npos) << table;
  EXPECT_EQ(rows({"associations"}).at(0).at("text2"), std::string(256, 'x'));
  EXPECT_EQ(rows({"associations"}).at(0).at("list5"), Json({"b\n", "\a"}));
  const Json plugin = rows({"associations", "plugins"}).at(0);
  EXPECT_EQ(plugin.at("column1"), std::string(256, 'x'));
  EXPECT_EQ(plugin.at("column2"), "%n%s");
  EXPECT_EQ(plugin.at("column3"), "\uFFFD");
  EXPECT_NE(on_database({"associations", "plugins"}).out.find("\na.  "), std::string::npos);
}

TEST_F(Associations, OfAMissingFileFailAndItIsNotCreated) {
  for (const auto& command : {std::vector<std::string>{"associations"}, {"associations", "plugins"}}) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "qmvctl: /etc/Association.db: No such file or directory (qmvctl init association creates it)\n");
    EXPECT_FALSE(std::filesystem::exists(path("Association.db")));
  }
}

TEST_F(Associations, OfAMissingTableFail) {
  sql("drop table association; drop table association_reg;");
  testing::internal::CaptureStderr();
  const Outcome associations = on_database({"associations"});
  const Outcome plugins = on_database({"associations", "plugins"});
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(associations.status, 1);
  EXPECT_EQ(associations.err, "qmvctl: " + database() + ": no such table: association\n");
  EXPECT_EQ(plugins.status, 1);
  EXPECT_EQ(
      plugins.err,
      "qmvctl: " + database() +
          ": table association_reg cannot be read: no such table: association_reg (qmvctl check association --db " +
          database() + " may tell why)\n");
}

// The view has a row for connections that wait for locks, as the command's, and none for the library's own: what these
// would see of a table that is locked for the moment.
TEST_F(Associations, PlugInsThatTheLibraryDoesNotSeeAreNotSilentlyLeftOut) {
  sql("drop table association_reg;");
  sql("create view association_reg as select 1, 2, 3, 4 from pragma_busy_timeout where timeout > 0;");
  const Outcome outcome = on_database({"associations", "plugins"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "qmvctl: " + database() +
                             ": table association_reg cannot be read (qmvctl check association --db " + database() +
                             " may tell why)\n");
}

TEST_F(Associations, OfAFileThatIsNoDatabaseFail) {
  file("test.db", ascii("not a database, and long enough to have a header of one hundred bytes if it were one. "
                        "It says so here."));
  const Outcome outcome = on_database({"associations"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": file is not a database\n");
}

TEST_F(Associations, TakeNoOtherSubcommand) {
  EXPECT_EQ(on_database({"associations", "unknown"}).status, 2);
}

}  // namespace
}  // namespace qmvctl::test
