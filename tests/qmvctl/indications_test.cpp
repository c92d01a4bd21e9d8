#include "command_test.h"

namespace qmvctl::test {
namespace {

class Indications : public CommandTest {
 protected:
  Indications() { on_database({"init"}); }

  void insert_one_of_each() {
    sql("insert into listener_destination values ('Desk', 'http://10.0.0.9:5988');");
    sql("insert into indication_filter values ('Fans', 'select * from CIM_AlertIndication', 1, 2, 4);");
    sql("insert into indication_subscription values ('Desk', 'Fans', 40, 10, 20, 1);");
  }

  const Json destination_{{"name", "Desk"}, {"destination", "http://10.0.0.9:5988"}};
  const Json filter_{{"name", "Fans"},
                     {"query", "select * from CIM_AlertIndication"},
                     {"sensor_number_mask", 1},
                     {"sensor_type_mask", 2},
                     {"severity_mask", 4}};
  const Json subscription_{{"destination", "Desk"},  {"filter", "Fans"},    {"sensor_number_mask", 10},
                           {"sensor_type_mask", 20}, {"severity_mask", 40}, {"enabled", 1}};
};

TEST_F(Indications, AreShownTogether) {
  insert_one_of_each();
  EXPECT_EQ(rows({"indications"}), Json({{"destinations", Json::array({destination_})},
                                         {"filters", Json::array({filter_})},
                                         {"subscriptions", Json::array({subscription_})}}));
}

TEST_F(Indications, AreShownOneByOne) {
  insert_one_of_each();
  EXPECT_EQ(rows({"indications", "destinations"}), Json::array({destination_}));
  EXPECT_EQ(rows({"indications", "filters"}), Json::array({filter_}));
  EXPECT_EQ(rows({"indications", "subscriptions"}), Json::array({subscription_}));
}

TEST_F(Indications, AreTablesForPeopleEachUnderItsHead) {
  insert_one_of_each();
  const std::string destinations =
      "Name  Destination\n"
      "Desk  http://10.0.0.9:5988\n";
  const std::string filters =
      "Name  Sensor mask  Type mask  Severity mask  Query\n"
      "Fans            1          2              4  select * from CIM_AlertIndication\n";
  const std::string subscriptions =
      "Destination  Filter  Sensor mask  Type mask  Severity mask  Enabled\n"
      "Desk         Fans             10         20             40        1\n";
  EXPECT_EQ(on_database({"indications"}).out,
            "Destinations\n" + destinations + "\nFilters\n" + filters + "\nSubscriptions\n" + subscriptions + "\n");
  EXPECT_EQ(on_database({"indications", "destinations"}).out, destinations);
  EXPECT_EQ(on_database({"indications", "filters"}).out, filters);
  EXPECT_EQ(on_database({"indications", "subscriptions"}).out, subscriptions);
}

TEST_F(Indications, WithoutARowThereAreNone) {
  EXPECT_EQ(on_database({"indications"}).out,
            "Destinations\nThere are no destinations.\n\n"
            "Filters\nThere are no filters.\n\n"
            "Subscriptions\nThere are no subscriptions.\n\n");
  const Json none = Json::array();
  EXPECT_EQ(rows({"indications"}), Json({{"destinations", none}, {"filters", none}, {"subscriptions", none}}));
}

TEST_F(Indications, OfHostileTextsAreShownBoundedAndPrintable) {
  const std::string too_long(600, 'x');
  sql("insert into listener_destination values ('a' || char(27) || '[2J', null);");
  sql("insert into indication_filter values ('" + too_long + "', '" + too_long + "', null, null, null);");
  EXPECT_EQ(on_database({"indications", "destinations"}).out, "Name   Destination\na.[2J\n");
  EXPECT_EQ(rows({"indications", "destinations"}).at(0).at("name"), "a\x1B[2J");
  EXPECT_EQ(rows({"indications", "filters"}).at(0).at("name"), std::string(256, 'x'));
  EXPECT_EQ(rows({"indications", "filters"}).at(0).at("query"), std::string(512, 'x'));
}

TEST_F(Indications, AreThoseOfTheInstanceDatabaseWithoutDb) {
  insert_one_of_each();
  std::filesystem::rename(database(), path("cim.db"));
  EXPECT_EQ(Json::parse(run({"indications", "filters", "--json"}).out), Json::array({filter_}));
  EXPECT_EQ(Json::parse(run({"indications", "--json"}).out).at("subscriptions"), Json::array({subscription_}));
}

TEST_F(Indications, OfAMissingFileFailAndItIsNotCreated) {
  const std::vector<std::vector<std::string>> commands = {
      {"indications"}, {"indications", "destinations"}, {"indications", "filters"}, {"indications", "subscriptions"}};
  for (const auto& command : commands) {
    const Outcome outcome = run(command);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qmvctl: /tmp/cim.db: No such file or directory (qmvctl init cim creates it)\n");
    EXPECT_FALSE(std::filesystem::exists(path("cim.db")));
  }
}

TEST_F(Indications, OfAMissingTableFailAndShowNothing) {
  sql("drop table indication_subscription;");
  testing::internal::CaptureStderr();
  const Outcome outcome = on_database({"indications"});
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "qmvctl: " + database() +
                             ": table indication_subscription cannot be read: no such table: indication_subscription "
                             "(qmvctl check cim --db " +
                             database() + " may tell why)\n");
}

TEST_F(Indications, TakeOneSubcommandAtMost) {
  EXPECT_EQ(on_database({"indications", "unknown"}).status, 2);
  EXPECT_EQ(on_database({"indications", "filters", "destinations"}).status, 2);
}

}  // namespace
}  // namespace qmvctl::test
