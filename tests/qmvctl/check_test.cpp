#include <sqlite3.h>
#include <sys/stat.h>

#include <chrono>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <thread>

#include "command_test.h"
#include "qmv.h"
#include "support/child.h"

namespace qmvctl::test {
namespace {

class Check : public CommandTest {
 protected:
  void SetUp() override { on_database({"init"}); }

  // Creates a table again, with its definition changed.
  void redefine(const std::string& table, const std::string& from, const std::string& to) {
    std::string definition = sql("select sql from sqlite_master where name = '" + table + "';");
    const size_t at = definition.find(from);
    ASSERT_NE(at, std::string::npos) << definition;
    sql("drop table " + table + ";");
    sql(definition.replace(at, from.size(), to));
  }

  // The problems and notes that a check must find, table and text, each on a line.
  std::string problems() {
    const Outcome outcome = on_database({"check", "--json"});
    std::string lines;
    bool is_wrong = false;
    for (const Json& finding : Json::parse(outcome.out)) {
      is_wrong |= finding.at("kind") == "problem";
      lines += finding.at("kind") == "note" ? "note: " : "";
      lines += finding.at("table").get<std::string>() + ": " + finding.at("problem").get<std::string>() + "\n";
      EXPECT_FALSE(finding.at("advice").get<std::string>().empty());
    }
    EXPECT_EQ(outcome.status, is_wrong ? 1 : 0);
    return lines;
  }

  // What to do about each.
  std::vector<std::string> advice() {
    std::vector<std::string> all;
    for (const Json& finding : Json::parse(on_database({"check", "--json"}).out)) all.push_back(finding.at("advice"));
    return all;
  }
};

constexpr const char* kRenewal =
    "Create a new database (qmvctl init cim --db NEW) and copy the rows over by the names of their columns.";

TEST_F(Check, FindsNothingWrongWithNewDatabases) {
  for (const char* kind : {"cim", "tmp_cim", "smashclp", "association"}) {
    std::filesystem::remove(database());
    on_database({"init", kind});
    const Outcome outcome = on_database({"check"});
    EXPECT_EQ(outcome.out, database() + ": nothing is wrong\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(on_database({"check", kind, "--json"}).out, "[]\n");
  }
}

TEST_F(Check, FindsNothingWrongWithTheSample) {
  std::filesystem::remove(database());
  on_database({"init", "--sample"});
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, SaysWhichColumnsAreSwappedAndWhatToDo) {
  redefine("compact_sdr", "SensorNum ", "Held ");
  redefine("compact_sdr", "SensorType ", "SensorNum ");
  redefine("compact_sdr", "Held ", "SensorType ");
  const Outcome outcome = on_database({"check"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            database() +
                ": 1 problem\n"
                "\n"
                "table compact_sdr: columns SensorType and SensorNum are swapped: the library reads columns by their "
                "position, so each is taken for the other.\n"
                "  Create a new database (qmvctl init cim --db NEW) and copy the rows over by the names of their "
                "columns.\n");
}

TEST_F(Check, SaysHowManyColumnsAreInAnotherOrder) {
  sql("drop table boot_order; create table boot_order (isHost, InstanceID text primary key, AssignedSequence);");
  EXPECT_EQ(problems(),
            "boot_order: 3 columns are in another order, from isHost on, where InstanceID is expected: the library "
            "reads columns by their position, so each is taken for another.\n");
}

TEST_F(Check, TakesUpperAndLowerCaseForAlike) {
  sql("drop table boot_order; create table Boot_Order (INSTANCEID text primary key, assignedsequence, ISHOST);");
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, FindsMissingTables) {
  sql("drop table role; drop table sel;");
  EXPECT_EQ(problems(),
            "role: the table is missing: nothing is read from it or stored in it.\n"
            "sel: the table is missing: nothing is read from it or stored in it.\n");
}

TEST_F(Check, FindsViewsInPlaceOfTables) {
  sql("alter table fru rename to stored; create view fru as select * from stored;");
  EXPECT_EQ(problems(), "fru: a view has its name: nothing can be stored in it.\n");
}

TEST_F(Check, FindsMissingColumns) {
  sql("alter table sel drop column EvMRev; alter table sel drop column EventType;");
  sql("alter table boot_order drop column isHost;");
  EXPECT_EQ(problems(),
            "boot_order: column isHost is missing: rows cannot be stored.\n"
            "sel: columns EventType and EvMRev are missing: rows cannot be stored, and each column behind is read into "
            "the field of the one before.\n");
}

TEST_F(Check, FindsAddedColumns) {
  sql("alter table sel add column Note text;");
  redefine("boot_order", "AssignedSequence ", "Note, AssignedSequence ");
  EXPECT_EQ(problems(),
            "boot_order: column Note is added between the others: each column behind is read into the field of the one "
            "after.\n"
            "sel: column Note is added behind the others: the library does not read it, and leaves it empty in new "
            "rows.\n");
}

TEST_F(Check, SaysOfSeveralColumnsBehindTheOthersWhatBecomesOfThem) {
  sql("alter table sel add column Y text; alter table sel add column Z text;");
  EXPECT_EQ(
      problems(),
      "sel: columns Y and Z are added behind the others: the library does not read them, and leaves them empty in "
      "new rows.\n");
  EXPECT_EQ(advice(), std::vector<std::string>{"If nothing else needs them: alter table sel drop column Y; alter table "
                                               "sel drop column Z;"});
}

TEST_F(Check, SaysWhichAddedColumnsAreLeftEmpty) {
  sql("alter table sel add column Made as (RecordID); alter table role add column X default 7;"
      "alter table device add column X default 7; alter table device add column Y default null;");
  EXPECT_EQ(
      problems(),
      "device: columns X and Y are added behind the others: the library does not read them, and leaves Y empty in "
      "new rows.\n"
      "role: column X is added behind the others: the library does not read it.\n"
      "sel: column Made is added behind the others: the library does not read it.\n");
}

TEST_F(Check, SaysWhichAddedColumnsLetNoRowBeStored) {
  redefine("boot_order", "isHost           INTEGER", "isHost INTEGER, X not null, Y, Z not null default 1");
  redefine("sel", "SensorType ", "X text not null default null, Y not null, SensorType ");
  EXPECT_EQ(problems(),
            "boot_order: columns X, Y and Z are added behind the others: the library does not read them; no row can be "
            "stored, since X must not be null and has no default.\n"
            "sel: columns X and Y are added between the others: each column behind is read into the field of the one "
            "after; no row can be stored, since X and Y must not be null and have no default.\n");
}

TEST_F(Check, SaysThatAnAddedKeyMustHaveAValueUnlessSqliteGivesItOne) {
  redefine("boot_order", "TEXT NOT NULL PRIMARY KEY", "TEXT NOT NULL UNIQUE");
  redefine("boot_order", "isHost           INTEGER", "isHost INTEGER, X integer primary key");
  EXPECT_EQ(problems().find("no row can be stored"), std::string::npos) << problems();
  redefine("boot_order", "X integer primary key", "X text primary key not null");
  EXPECT_NE(problems().find("no row can be stored, since X must not be null and has no default."), std::string::npos)
      << problems();
}

TEST_F(Check, SaysThatNoRowIsStoredWhereAColumnIsGenerated) {
  redefine("boot_order", "isHost           INTEGER", "isHost INTEGER as (7)");
  EXPECT_EQ(problems(), "boot_order: rows cannot be stored: cannot INSERT into generated column \"isHost\".\n");
}

TEST_F(Check, SaysThatAddedColumnsAreReadInThePlaceOfMissingOnes) {
  sql("drop table boot_order; create table boot_order (InstanceID text primary key, AssignedSequence, Y, Z);");
  EXPECT_EQ(problems(),
            "boot_order: column isHost is missing and columns Y and Z are added: rows cannot be stored, and since the "
            "library reads columns by their position, those from Y on, where isHost is expected, are taken for "
            "others.\n");
  EXPECT_EQ(advice(), std::vector<std::string>{kRenewal});
}

TEST_F(Check, SaysFromWhereOnMissingAndAddedColumnsTogetherShiftTheOthers) {
  sql("drop table boot_order; create table boot_order (X, InstanceID text primary key, AssignedSequence);"
      "alter table fru rename column DeviceAccessAddr to Access; alter table fru drop column BrdMfrName;");
  redefine("fru", "EntityInst ", "Y, EntityInst ");
  EXPECT_EQ(problems(),
            "boot_order: column isHost is missing and column X is added: rows cannot be stored, and since the library "
            "reads columns by their position, those from X on, where InstanceID is expected, are taken for others.\n"
            "fru: column DeviceAccessAddr is called Access: rows cannot be stored.\n"
            "fru: column BrdMfrName is missing and column Y is added: rows cannot be stored, and since the library "
            "reads columns by their position, those from Y on, where EntityInst is expected, are taken for others.\n");
}

TEST_F(Check, AdvisesNotToDropAllColumns) {
  sql("drop table boot_order; create table boot_order (a, b, c, d);");
  EXPECT_EQ(problems(),
            "boot_order: columns InstanceID, AssignedSequence and isHost are missing and columns a, b, c and d are "
            "added: rows cannot be stored, and since the library reads columns by their position, those from a on, "
            "where InstanceID is expected, are taken for others.\n");
  EXPECT_EQ(advice(), std::vector<std::string>{kRenewal});
}

// Their columns cannot be dropped, and they cannot be indexed.
TEST_F(Check, AdvisesNoStatementOnVirtualTables) {
  sql("drop table boot_order;"
      "create virtual table boot_order using fts5 (InstanceID, AssignedSequence, isHost, Note);");
  EXPECT_EQ(advice(), (std::vector<std::string>{kRenewal, kRenewal}));
}

// Each time the advice is what SQLite takes: with what needs the column it takes no statement.
TEST_F(Check, AdvisesOnlyStatementsThatSqliteTakes) {
  sql("alter table sel add column Note text;");
  const std::string drop = "alter table sel drop column Note;";
  EXPECT_EQ(advice(), std::vector<std::string>{"If nothing else needs it: " + drop});
  for (const auto& [make, remove] : std::vector<std::pair<const char*, const char*>>{
           {"create index other on sel (RecordID, Note);", "drop index other;"},
           {"create index other on sel (lower(Note));", "drop index other;"},
           {"create index other on sel (RecordID) where Note > 1;", "drop index other;"},
           {"create view other as select Note from sel;", "drop view other;"},
           {"create view other as select a from nowhere;", "drop view other;"},
           {"create table theirs (a); create trigger other after insert on theirs begin delete from sel where Note; "
            "end;",
            "drop table theirs;"}}) {
    SCOPED_TRACE(make);
    sql(make);
    EXPECT_EQ(advice(), std::vector<std::string>{kRenewal});
    sqlite3* handle = nullptr;
    sqlite3_open(database().c_str(), &handle);
    EXPECT_NE(sqlite3_exec(handle, drop.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    sql(remove);
  }
  sql("create table theirs (a integer primary key autoincrement); analyze;");
  EXPECT_EQ(advice(), std::vector<std::string>{"If nothing else needs it: " + drop});
  sql(drop);
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, AdvisesNotToDropWhatAGeneratedColumnIsMadeOf) {
  sql("alter table sel add column Note text; alter table sel add column Made as (Note || 'x');"
      "alter table role add column Made as (Name); alter table role add column Note;");
  EXPECT_EQ(advice(), (std::vector<std::string>{
                          "If nothing else needs them: alter table role drop column Made; alter table role drop column "
                          "Note;",
                          kRenewal}));
}

// What is behind the first statement of a stored text is not read by SQLite, and not run in the copy.
TEST_F(Check, RunsNothingThatADatabaseHides) {
  sql("alter table sel add column Note text; create view other as select 1;");
  sql("pragma writable_schema = on; update sqlite_master set sql = sql || '; attach ''" + path("made.db") +
      "'' as made; create table made.t (a);' where name = 'other';");
  EXPECT_EQ(advice().size(), 1u);
  EXPECT_FALSE(std::filesystem::exists(path("made.db")));
}

// As it is shown, the statement would be about another column.
TEST_F(Check, AdvisesNoStatementWithControlCharacters) {
  sql("alter table sel add column \"Note\nx\" text; alter table fru rename column DevIdStr to \"Dev\nId\";");
  EXPECT_EQ(advice(), (std::vector<std::string>{kRenewal, kRenewal}));
}

TEST_F(Check, FindsGeneratedColumns) {
  redefine("sel", "SensorType ", "Made INTEGER generated always as (RecordID), SensorType ");
  EXPECT_EQ(problems(),
            "sel: column Made is added between the others: each column behind is read into the field of the one "
            "after.\n");
}

TEST_F(Check, AdvisesStatementsThatRunWithAnyName) {
  sql("alter table sel add column \"a \"\"b\"\"\" text; alter table role add column \"order\" text;"
      "alter table device add column \"\" text;");
  sql("alter table fru rename column DevIdStr to \"1st; name\";");
  const Json findings = Json::parse(on_database({"check", "--json"}).out);
  EXPECT_EQ(findings.size(), 4u);
  for (const Json& finding : findings) {
    const std::string advice = finding.at("advice");
    sql(advice.substr(advice.find("alter")));
  }
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, FindsRenamedColumns) {
  sql("alter table fru rename column DevIdStr to DevId;");
  EXPECT_EQ(problems(), "fru: column DevIdStr is called DevId: rows cannot be stored.\n");
}

TEST_F(Check, FindsKeysThatAreNotUnique) {
  redefine("boot_order", " PRIMARY KEY", "");
  redefine("fru", ", ChannelNumber)", ", EntityID)");
  EXPECT_EQ(problems(),
            "boot_order: column InstanceID is not unique: storing a row that exists adds a second one in place of an "
            "update.\n"
            "fru: columns DeviceAccessAddr, EntityID, FruIDSlaveAddr and LUNBusID are unique without ChannelNumber: a "
            "row that has the same there as another one is refused, or replaces it.\n"
            "fru: columns ChannelNumber, DeviceAccessAddr, FruIDSlaveAddr and LUNBusID are not unique: storing a row "
            "that exists adds a second one in place of an update.\n");
  sql("create index plain on boot_order (InstanceID);");
  sql("create unique index partial on boot_order (InstanceID) where isHost;");
  sql("create unique index more on boot_order (InstanceID, lower(isHost));");
  EXPECT_EQ(problems().find("boot_order: column InstanceID is not unique: "), 0u) << problems();
}

TEST_F(Check, FindsKeysThatAPartIsUniqueOf) {
  sql("create unique index part on fru (LUNBusID, ChannelNumber);");
  const std::string part =
      "fru: columns ChannelNumber and LUNBusID are unique without DeviceAccessAddr and FruIDSlaveAddr: a row that has "
      "the same there as another one is refused, or replaces it.\n";
  EXPECT_EQ(problems(), part);
  sql("drop index part;");
  redefine("fru", "FruIDSlaveAddr, DeviceAccessAddr, LUNBusID", "LUNBusID");
  EXPECT_EQ(problems(), part);
  EXPECT_EQ(advice(), std::vector<std::string>{kRenewal});
}

TEST_F(Check, FindsWhatIsUniqueOutsideTheKey) {
  const std::string other = ": a row that has the same there as another one is refused, or replaces it.\n";
  sql("create unique index u on fru (EntityID); create unique index v on fru (entityid);"
      "create unique index w on boot_order (lower(isHost)); create unique index x on role (CommonName) where Name > "
      "'a';"
      "create unique index y on sel (SensorType, SensorNum);");
  EXPECT_EQ(problems(),
            "boot_order: what index w is made of is unique without InstanceID" + other +
                "fru: column EntityID is unique without ChannelNumber, DeviceAccessAddr, FruIDSlaveAddr and "
                "LUNBusID" +
                other + "role: column CommonName is unique in some of the rows without Name" + other +
                "sel: columns SensorNum and SensorType are unique without RecordID" + other);
  EXPECT_EQ(advice().at(1), "If nothing else needs them: drop index u; drop index v;");
  for (const std::string& advised : advice()) sql(advised.substr(advised.find("drop")));
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, FindsConstraintsOutsideTheKeyWhichCannotBeDropped) {
  redefine("boot_order", "isHost           INTEGER", "isHost INTEGER unique");
  EXPECT_EQ(problems(),
            "boot_order: column isHost is unique without InstanceID: a row that has the same there as another one is "
            "refused, or replaces it.\n");
  EXPECT_EQ(advice(), std::vector<std::string>{kRenewal});
}

TEST_F(Check, DoesNotMindWhatIsUniqueWithTheWholeKey) {
  sql("create unique index u on boot_order (isHost, InstanceID); create unique index v on sel (RecordID, abs(EvMRev));"
      "create unique index w on boot_order (InstanceID) where isHost;");
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, DoesNotMindWhatIsUniqueInTablesThatTheLibraryOnlyReads) {
  std::filesystem::remove(database());
  on_database({"init", "association"});
  sql("create unique index u on association (ClassName);");
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, FindsTriggersAndSaysHowToDropThem) {
  sql("create trigger \"on sel\" after insert on sel begin update sel set EvMRev = 3; end;");
  EXPECT_EQ(problems(),
            "sel: trigger on sel runs when rows change: what is stored may read back different, or not at all.\n");
  EXPECT_EQ(advice(), std::vector<std::string>{"If nothing else needs it: drop trigger \"on sel\";"});
  sql("drop trigger \"on sel\";");  // as it advises
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, DoesNotMindTriggersOfOtherTables) {
  sql("create table theirs (a); create trigger t after insert on theirs begin delete from theirs; end;");
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, AnIndexMakesAKeyUniqueAsItAdvises) {
  redefine("boot_order", " PRIMARY KEY", "");
  const std::string advice = Json::parse(on_database({"check", "--json"}).out).at(0).at("advice");
  sql(advice.substr(advice.find("create")));
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, FindsTextsThatAreWiderThanTheirField) {
  sql("insert into role (CreationClassName, Name, CommonName) values ('c', 'n', printf('%.257c', 'x')),"
      "('c', 'm', printf('%.300c', 'x')), ('c', 'o', printf('%.256c', 'x'));");
  EXPECT_EQ(
      problems(),
      "role: column CommonName: 2 texts are wider than the field of 256 bytes, and cut when read; the longest has "
      "300.\n");
}

// The library does not cut these: the last byte of the field is for the zero that ends the text.
TEST_F(Check, FindsTextsThatRunOnOverTheFieldsBehindTheirOwn) {
  sql("insert into sel_info (Version, FreeSpace) values ('51', printf('%.127c', 'x'));"
      "insert into device (GUID, DeviceType, IPAddress) values ('a', 1, printf('%.255c', 'x'));");
  EXPECT_EQ(problems(), "");
  sql("update sel_info set FreeSpace = FreeSpace || 'x'; update device set IPAddress = IPAddress || 'x';"
      "insert into device values ('b', 1, printf('%.300c', 'x'), 1, 7, 1);");
  EXPECT_EQ(
      problems(),
      "device: column IPAddress: 2 texts are longer than 255 bytes, and run on over the fields behind their own "
      "when read; the longest has 300.\n"
      "sel_info: column FreeSpace: 1 text is longer than 127 bytes, and runs on over the fields behind its own when "
      "read; the longest has 128.\n");
}

// What a get-one of the library reads: read(handle, &record).
template <class Record>
Record read_one(const std::string& file, auto read) {
  sqlite3* handle = nullptr;
  sqlite3_open(file.c_str(), &handle);
  Record* made = nullptr;
  EXPECT_EQ(read(handle, &made), 0);
  const Record record = made ? *made : Record{};
  db_freemem(made);
  sqlite3_close(handle);
  return record;
}

// Tables whose reader is a column behind: the columns that it reads into texts, in which field they end up, and the
// longest text that does so whole.
class CheckOfShiftedColumns : public Check {
 protected:
  struct Column {
    const char* name;
    size_t field;
    size_t longest;
  };

  // Holds what the check says of texts of that table's only row, full of 1, against what is read of them.
  template <class Record>
  void expect_widths(const std::string& table, const std::vector<Column>& columns, auto read) {
    const auto bytes = [&] {
      const auto record = read_one<Record>(database(), read);
      return std::string(reinterpret_cast<const char*>(&record), sizeof record);
    };
    const std::string plain = bytes();
    for (const Column& column : columns) {
      SCOPED_TRACE(column.name);
      const auto text_in_field = [&] { return std::string(bytes().substr(column.field).c_str()); };
      const std::string name = column.name;
      const std::string text = "1" + std::string(column.longest - 1, 'x');
      sql("update " + table + " set " + name + " = '" + text + "';");
      EXPECT_EQ(bytes(), std::string(plain).replace(column.field, text.size(), text)) << "whole, and nothing else";
      EXPECT_EQ(problems(), "");
      sql("update " + table + " set " + name + " = '" + text + "x';");
      EXPECT_NE(text_in_field(), text + "x");
      EXPECT_EQ(problems().find(table + ": column " + name + ": 1 text is "), 0u) << problems();
      sql("update " + table + " set " + name + " = 1;");
    }
  }

  // That a long text of a column changes nothing that is read, and that the check does not mind it.
  template <class Record>
  void expect_not_read_as_text(const std::string& table, const std::string& column, auto read) {
    SCOPED_TRACE(column);
    const auto plain = read_one<Record>(database(), read);
    sql("update " + table + " set " + column + " = '1' || printf('%.2000c', 'x');");
    const auto record = read_one<Record>(database(), read);
    EXPECT_EQ(std::memcmp(&record, &plain, sizeof record), 0);
    EXPECT_EQ(problems(), "");
  }
};

TEST_F(CheckOfShiftedColumns, OfTheLogKnowsTheFieldsIntoWhichTheyAreRead) {
  sql("insert into sel_info values (1, 1, 1, 1, 1, 1, 1, 1);");
  expect_widths<sel_info_rec>("sel_info",
                              {{"MaxNoOfSels", offsetof(sel_info_rec, CompletionCode), 63},
                               {"CompletionCode", offsetof(sel_info_rec, Version), 63},
                               {"FreeSpace", offsetof(sel_info_rec, AddTimeStamp), 127},
                               {"AddTimeStamp", offsetof(sel_info_rec, EraseTimeStamp), 127},
                               {"EraseTimeStamp", offsetof(sel_info_rec, OperationSupport), 64}},
                              db_get_selinfo);
  for (const char* column : {"Version", "OperationSupport"}) {
    expect_not_read_as_text<sel_info_rec>("sel_info", column, db_get_selinfo);
  }
}

TEST_F(CheckOfShiftedColumns, OfTheDhcpEndpointKnowsTheFieldsIntoWhichTheyAreRead) {
  const auto read = [](sqlite3* handle, dhcp_protocol_endpoint_rec** record) {
    return db_get_dhcp_protocol_endpoint(handle, "1", record);
  };
  sql("insert into dhcp_protocol_endpoint values (1, 1, 1, 1, 1, 1, 1, 1);");
  expect_widths<dhcp_protocol_endpoint_rec>(
      "dhcp_protocol_endpoint",
      {{"NameFormat", offsetof(dhcp_protocol_endpoint_rec, NameFormat), 256},
       {"ProtocolIFType", offsetof(dhcp_protocol_endpoint_rec, OtherTypeDesc), 256},
       {"ClientState", offsetof(dhcp_protocol_endpoint_rec, ElementName), 256}},
      read);
  for (const char* column : {"OtherTypeDesc", "ElementName"}) {
    expect_not_read_as_text<dhcp_protocol_endpoint_rec>("dhcp_protocol_endpoint", column, read);
  }
}

TEST_F(Check, CountsTheBytesOfATextNotItsCharacters) {
  sql("insert into sel (RecordID, GeneratorID) values (1, '\u00E4\u00E4'), (2, '\u00E4\u00E4a');");
  EXPECT_EQ(
      problems(),
      "sel: column GeneratorID: 1 text is wider than the field of 4 bytes, and cut when read; the longest has 5.\n");
}

// Every text that is declared, in every database, but those that the library does not read as texts: of the shell's
// jobs, and two of each table whose reader is a column behind.
TEST_F(Check, KnowsTheWidthOfEveryText) {
  for (const char* kind : {"cim", "tmp_cim", "association"}) {
    std::filesystem::remove(database());
    on_database({"init", kind});
    std::string tables = sql("select group_concat(name) from sqlite_master where type = 'table';") + ",";
    size_t expected = 0;
    for (size_t comma; (comma = tables.find(',')) != std::string::npos; tables.erase(0, comma + 1)) {
      const std::string table = tables.substr(0, comma);
      const std::string columns = " from pragma_table_info('" + table + "')";
      sql("insert into " + table + " values (" +
          sql("select group_concat(case type when 'TEXT' then 'printf(''%.2000c'', ''x'')' else '1' end)" + columns) +
          ");");
      expected += std::stoul(sql("select count(*)" + columns + " where type = 'TEXT';"));
      if (table == "sel_info" || table == "dhcp_protocol_endpoint") expected -= 2;
    }
    size_t found = 0;
    for (const Json& finding : Json::parse(on_database({"check", "--json"}).out)) {
      found += finding.at("problem").get<std::string>().find(": 1 text is ") != std::string::npos;
    }
    EXPECT_EQ(found, expected) << kind;
  }
}

TEST_F(Check, FindsEntitiesThatIpmiDoesNotKnow) {
  sql("insert into device (GUID, DeviceType, EntityID) values ('a', 1, 0), ('b', 1, 53), ('c', 1, 54), ('d', 1, 56),"
      "('e', 1, -1), ('f', 1, 63), ('g', 1, null), ('h', 1, 'abc'), ('i', 1, 300), ('j', 1, 67), ('k', 1, 143),"
      "('l', 1, 54), ('m', 1, 7.5), ('n', 1, 256);");
  EXPECT_EQ(
      problems(),
      "device: column EntityID: 11 rows have entities that IPMI does not know: -1, 7.5, 54 reserved, 56 reserved, "
      "63 reserved, 67 entity 43h, 143 entity 8Fh, 256, 300, 'abc'.\n");
}

TEST_F(Check, NotesEntitiesThatHaveNoClass) {
  sql("insert into device (GUID, DeviceType, EntityID) values ('a', 1, 55), ('b', 1, 64), ('c', 1, 66), ('d', 1, 64),"
      "('e', 1, 144), ('f', 1, 209), ('g', 1, 255);");
  EXPECT_EQ(problems(),
            "note: device: column EntityID: 7 rows have entities without a CIM class: 55 Air Inlet, 64 Air Inlet, 66 "
            "Baseboard, 144 entity 90h, 209 entity D1h, 255 entity FFh.\n");
  const Outcome outcome = on_database({"check"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.find(database() + ": nothing is wrong\n\nnote: table device: column EntityID: "), 0u)
      << outcome.out;
  sql("insert into device (GUID, DeviceType, EntityID) values ('h', 1, 54);");
  EXPECT_EQ(on_database({"check"}).out.find(database() + ": 1 problem\n\ntable device: "), 0u);
}

TEST_F(Check, SaysWhatIsWithOneRowAlone) {
  sql("insert into device (GUID, DeviceType, EntityID) values ('a', 1, 55), ('b', 1, 54);");
  EXPECT_EQ(problems(),
            "device: column EntityID: 1 row has an entity that IPMI does not know: 54 reserved.\n"
            "note: device: column EntityID: 1 row has an entity without a CIM class: 55 Air Inlet.\n");
}

TEST_F(Check, NamesTheFirstEntitiesOfManyAndTheBeginningOfLongOnes) {
  sql("insert into device (GUID, DeviceType, EntityID) values ('a', 1, printf('%.1000000c', 'x')), ('b', 1, 54);");
  EXPECT_EQ(problems(), "device: column EntityID: 2 rows have entities that IPMI does not know: 54 reserved, '" +
                            std::string(31, 'x') + "....\n");
  sql("with recursive n (id) as (select 1000 union all select id + 1 from n where id < 1306) "
      "insert into device (GUID, DeviceType, EntityID) select id, 1, id from n;");
  EXPECT_EQ(problems(),
            "device: column EntityID: 309 rows have entities that IPMI does not know: 54 reserved, 1000, 1001, 1002, "
            "1003, 1004, 1005, 1006, 1007, 1008 and 299 more.\n");
}

TEST_F(Check, FindsRecordIdsThatTheLogCannotHold) {
  sql("insert into sel (RecordID) values (1), (65534);");
  EXPECT_EQ(on_database({"check"}).status, 0);
  sql("insert into sel (RecordID) values (0), (65535);");
  const std::string out = on_database({"check"}).out;
  EXPECT_NE(out.find("sel: column RecordID: 2 events are outside 1 to 65534: "), std::string::npos) << out;
  sql("delete from sel where RecordID not between 1 and 65534;");  // as it advises
  EXPECT_NE(out.find("delete from sel where RecordID not between 1 and 65534;"), std::string::npos) << out;
  EXPECT_EQ(on_database({"check"}).status, 0);
}

TEST_F(Check, FindsDamageToTheFile) {
  sql("create index extra on role (CommonName); insert into role (CreationClassName, Name) values ('a', 'b');");
  sql("pragma writable_schema = on; update sqlite_master set rootpage = "
      "(select rootpage from sqlite_master where name = 'role') where name = 'extra';");
  EXPECT_NE(problems().find(": the file is damaged: "), std::string::npos) << problems();
}

TEST_F(Check, SaysEachDamageByItself) {
  const long page = std::stol(sql("select rootpage from sqlite_master where name = 'role';"));
  const long size = std::stol(sql("pragma page_size;"));
  sql("drop table sel;");
  std::fstream(database(), std::ios::binary | std::ios::in | std::ios::out).seekp((page - 1) * size)
      << std::string(100, '\xFF');
  for (const Json& finding : Json::parse(on_database({"check", "--json"}).out)) {
    EXPECT_EQ(finding.at("problem").get<std::string>().find_first_of("\n*"), std::string::npos) << finding;
  }
  const std::string all = problems();
  EXPECT_EQ(all.find(": the file is damaged: "), 0u) << all;
  EXPECT_NE(all.find("role: it cannot be read in full: "), std::string::npos) << all;
  EXPECT_NE(all.find("sel: the table is missing"), std::string::npos) << all;
}

TEST_F(Check, OfADatabaseOfSomethingElseSaysSoOnce) {
  file("test.db", {});
  EXPECT_EQ(problems(), ": none of the tables of cim is there.\n");
}

TEST_F(Check, OfAFileThatIsNoDatabaseSaysSo) {
  file("test.db", ascii(std::string(200, 'x')));
  const Outcome outcome = on_database({"check"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.out.find("file is not a database"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("Restore it from a copy"), std::string::npos) << outcome.out;
}

TEST_F(Check, OfWhatIsNoRegularFileSaysSo) {
  std::filesystem::create_directory(path("folder"));
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {path("folder"), path("pipe"), std::string("/dev/zero")}) {
    const Outcome outcome = run({"check", "--db", name});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, name +
                               ": 1 problem\n\n"
                               "is no regular file\n"
                               "  Name another file with --db, or see to this one.\n");
  }
}

TEST_F(Check, OfAMissingFileSaysSo) {
  std::filesystem::remove(database());
  const Outcome outcome = on_database({"check"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, database() +
                             ": 1 problem\n\n"
                             "No such file or directory (qmvctl init cim --db " +
                             database() +
                             " creates it)\n"
                             "  Name another file with --db, or see to this one.\n");
  EXPECT_FALSE(std::filesystem::exists(database()));
}

TEST_F(Check, LetsNoControlCharacterThrough) {
  sql("alter table sel add column \"x\x1B[2J\" text;");
  EXPECT_EQ(on_database({"check"}).out.find('\x1B'), std::string::npos);
}

TEST_F(Check, SurvivesNamesWithQuotes) {
  sql("create table \"it's\" (a); create index \"that's\" on role (CommonName);");
  EXPECT_EQ(problems(), "");
}

TEST_F(Check, ChangesNothing) {
  sql("insert into role (CreationClassName, Name) values ('a', 'b');");
  const auto before = std::filesystem::last_write_time(database());
  EXPECT_EQ(problems(), "");
  EXPECT_EQ(std::filesystem::last_write_time(database()), before);
}

TEST_F(Check, WithoutDbChecksTheFilesThatHostsOpen) {
  run({"init"});
  EXPECT_EQ(run({"check"}).out,
            "/tmp/cim.db: nothing is wrong\n/tmp/tmp_cim.db: nothing is wrong\n/tmp/smashclp.db: nothing is wrong\n");
  run({"init", "association"});
  std::filesystem::remove(path("tmp_cim.db"));
  const Outcome outcome = run({"check"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.out.find("/tmp/tmp_cim.db: 1 problem\n"), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.find("/etc/Association.db: nothing is wrong\n"), std::string::npos) << outcome.out;
}

TEST_F(Check, GoesByTheKindThatIsNamed) {
  EXPECT_EQ(on_database({"check", "cim"}).status, 0);
  const Outcome outcome = on_database({"check", "tmp_cim"});
  EXPECT_NE(outcome.out.find("none of the tables of tmp_cim is there"), std::string::npos) << outcome.out;
  EXPECT_EQ(on_database({"check", "other"}).status, 2);
}

// Another process that holds a transaction on the scratch database until it is killed.
class CheckOfLocks : public Check {
 protected:
  qmv::test::Child holder(const char* begin) {
    qmv::test::Child holder([this, begin] {
      sqlite3* handle = nullptr;
      sqlite3_open(database().c_str(), &handle);
      EXPECT_EQ(sqlite3_exec(handle, begin, nullptr, nullptr, nullptr), SQLITE_OK);
      raise(SIGSTOP);
    });
    holder.wait_until_stopped();
    return holder;
  }

  std::string problem_while_held(const char* begin) {
    const qmv::test::Child holding = holder(begin);
    return problems();
  }

  static constexpr const char* kRead = "begin; select count(*) from role;";
};

TEST_F(CheckOfLocks, NamesTheProcessThatKeepsOthersFromWriting) {
  const std::string problem = problem_while_held("begin immediate;");
  EXPECT_EQ(problem.find(": process "), 0u) << problem;
  EXPECT_NE(problem.find(" has held the write lock for a second: nobody else can store anything.\n"),
            std::string::npos);
}

TEST_F(CheckOfLocks, SaysThatTheFileCannotBeReadEither) {
  const std::string problem = problem_while_held("begin exclusive;");
  EXPECT_EQ(problem.find(": process "), 0u) << problem;
  EXPECT_NE(problem.find(": the check ends here: " + database() + ": database is locked\n"), std::string::npos);
}

TEST_F(CheckOfLocks, FindsTheWriterOfAnotherJournalWithoutItsName) {
  sql("pragma journal_mode = wal;");
  EXPECT_EQ(problem_while_held("begin immediate;"),
            ": another process has held the write lock for a second: nobody else can store anything.\n");
}

TEST_F(CheckOfLocks, NamesTheReaderThatKeepsOthersFromWriting) {
  const std::string problem = problem_while_held(kRead);
  EXPECT_EQ(problem.find(": process "), 0u) << problem;
  EXPECT_NE(problem.find(" has held a read lock for a second: nobody else can store anything.\n"), std::string::npos);
}

TEST_F(CheckOfLocks, DoNotMindReadersThatEnd) {
  qmv::test::Child holding = holder(kRead);
  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    holding.go_on();
  });
  EXPECT_EQ(problems(), "");
  release.join();
  holding.wait_for_end();
}

TEST_F(CheckOfLocks, DoNotMindReadersOfAnotherJournal) {
  sql("pragma journal_mode = wal;");
  EXPECT_EQ(problem_while_held(kRead), "");
}

}  // namespace
}  // namespace qmvctl::test
