// What is exported and imported again: the same rows.
#include <sys/resource.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "command_test.h"
#include "packed_text.h"
#include "support/child.h"
#include "text.h"

namespace qmvctl::test {
namespace {

namespace fs = std::filesystem;

class Export : public CommandTest {
 protected:
  Export() { on_database({"init"}); }

  void import(const std::vector<std::string>& files) {
    std::vector<std::string> command{"import"};
    command.insert(command.end(), files.begin(), files.end());
    const Outcome outcome = on_database(command);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }

  // All rows of the tables that an import fills, in any order.
  std::string tables() {
    std::string all;
    for (const char* name : {"compact_sdr", "full_sdr", "fru", "fru_locator_sdr", "sel"}) {
      const std::string table = name;
      const std::string row =
          sql("select group_concat('quote(' || name || ')', ' || '','' || ') from pragma_table_info('" + table + "');");
      all += table + "\n" +
             sql("select group_concat(r, char(10)) from (select " + row + " as r from " + table + " order by r);") +
             "\n";
    }
    return all;
  }

  // Exports, imports that into a new database, and expects the same rows.
  void expect_same_again(const std::vector<int>& frus, bool has_events) {
    fs::remove_all(path("dumps"));
    fs::create_directory(path("dumps"));
    std::vector<std::string> files{"--sdr", path("dumps/server.sdr")};
    for (const int id : frus) {
      const std::string number = std::to_string(id);
      files.insert(files.end(), {"--fru", number + "=" + path("dumps/fru" + number)});
    }
    if (has_events) files.insert(files.end(), {"--sel", path("dumps/server.sel")});
    std::vector<std::string> command{"export"};
    command.insert(command.end(), files.begin(), files.end());
    const Outcome outcome = on_database(command);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    const std::string before = tables();
    fs::remove(database());
    on_database({"init"});
    import(files);
    EXPECT_TRUE(tables() == before) << before << "\n became\n" << tables();
    fs::remove(database());
    on_database({"init"});
  }
};

TEST_F(Export, OfTheSampleGivesTheSameRows) {
  const std::string folder = std::string(QMVCTL_SAMPLES) + "/";
  std::vector<std::string> files{"--sdr", folder + "server.sdr", "--sel", folder + "server.sel"};
  std::vector<int> ids;
  for (int id = 0; id < 10; ++id) {
    files.insert(files.end(), {"--fru", std::to_string(id) + "=" + folder + "fru" + std::to_string(id) + ".bin"});
    ids.push_back(id);
  }
  import(files);
  expect_same_again(ids, true);
}

TEST_F(Export, SaysWhatItWrote) {
  import({"--sel", file("one.sel", {1, 0, 2, 1, 0, 0, 0x50, 0x20, 0, 4, 8, 0x50, 0x6F, 3, 0xFF, 0xFF})});
  EXPECT_EQ(on_database({"export", "--sel", path("out.sel")}).out, "wrote " + path("out.sel") + ", 16 bytes\n");
  EXPECT_EQ(rows({"export", "--sel", path("other.sel")}),
            Json({{"written", {{{"file", path("other.sel")}, {"bytes", 16}}}}, {"notes", Json::array()}}));
}

TEST_F(Export, WritesEventsByteByByte) {
  const Bytes event{0x34, 0x12, 2, 1, 2, 3, 0xF0, 0x33, 0, 4, 8, 0x50, 0xEF, 3, 0xFE, 0xFD};
  import({"--sel", file("one.sel", event)});
  on_database({"export", "--sel", path("out.sel")});
  std::ifstream stream(path("out.sel"), std::ios::binary);
  EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(stream), {}), event);
}

TEST_F(Export, PutsSensorsOfASharedRecordTogether) {
  Bytes shared = compact_record(ascii_field("Fan"));
  shared[23] = 0x13;  // three sensors, with letters
  shared[24] = 0x80;  // and entity instances of their own
  import({"--sdr", file("shared.sdr", shared)});
  EXPECT_EQ(rows({"sensors"}).size(), 3u);
  on_database({"export", "--sdr", path("out.sdr")});
  std::ifstream stream(path("out.sdr"), std::ios::binary);
  EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(stream), {}).size(), shared.size());
  expect_same_again({}, false);
}

TEST_F(Export, GivesEveryRecordAnIdOfItsOwn) {
  import({"--sdr", std::string(QMVCTL_SAMPLES) + "/server.sdr"});
  on_database({"export", "--sdr", path("out.sdr")});
  std::ifstream stream(path("out.sdr"), std::ios::binary);
  const Bytes dump(std::istreambuf_iterator<char>(stream), {});
  std::set<int> ids;
  size_t records = 0;
  for (size_t at = 0; at < dump.size(); at += 5 + dump[at + 4], ++records) ids.insert(dump[at] | dump[at + 1] << 8);
  EXPECT_EQ(records, rows({"sensors"}).size() + rows({"fru"}).size());
  EXPECT_EQ(ids.size(), records);
}

TEST_F(Export, KeepsTheEntityOfFruZeroThatTheControllersRecordGives) {
  Bytes controller = numbered_record(0x12, 15, ascii_field("BMC"));
  controller[5] = 0x20;
  controller[8] = 0x08;
  const std::string image = file("fru", fru_image({}, board_area(ascii_field("Maker")), {}));
  import({"--sdr", file("one.sdr", compact_record() + controller), "--fru", "0=" + image});
  EXPECT_EQ(sql("select DevIdStr || EntityID from fru;"), "BMC76");
  expect_same_again({0}, false);
}

TEST_F(Export, NotesSensorsThatNoLongerSayWhatTheirRecordSaid) {
  Bytes shared = compact_record(ascii_field("Fan"));
  shared[23] = 0x02;
  shared[24] = 0;
  import({"--sdr", file("shared.sdr", shared)});
  sql("update compact_sdr set SensorName = 'Front' where SensorNum = 72;");
  const Outcome outcome = on_database({"export", "--sdr", path("out.sdr")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("note: sensor 45:46:48 is not in the dump as it is in the table\n"), std::string::npos)
      << outcome.err;
  import({"--sdr", path("out.sdr")});
  EXPECT_EQ(sql("select group_concat(SensorName) from compact_sdr;"), "Fan 0,Front");
}

// Exports everything, whatever column of whatever table was changed before.
class ExportOfChanges : public Export, public testing::WithParamInterface<const char*> {
 protected:
  ExportOfChanges() {
    Bytes locator = fru_locator_record(ascii_field("Board"));
    locator[5] = 0x20;
    locator[6] = 0;
    locator[7] = 0x80;
    locator[12] = 0x48;  // the entity of the sensors
    locator[13] = 0x49;
    Bytes full = full_record(ascii_field("Volt"));
    full[7] = 1;  // another sensor
    import({"--sdr", file("one.sdr", compact_record(ascii_field("Fan")) + full + locator), "--fru",
            "0=" + file("fru", fru_image({}, board_area(ascii_field("Maker")), {})), "--sel",
            file("one.sel", {1, 0, 2, 1, 0, 0, 0x50, 0x20, 0, 4, 8, 0x50, 0x6F, 3, 0xFF, 0xFF})});
    fs::copy(database(), path("imported.db"));
  }

  std::vector<std::string> columns(const std::string& table) {
    std::istringstream names(sql("select group_concat(name, ' ') from pragma_table_info('" + table + "');"));
    return {std::istream_iterator<std::string>(names), {}};
  }

  Outcome export_all(const std::string& folder) {
    fs::remove_all(path(folder));
    fs::create_directory(path(folder));
    return on_database({"export", "--sdr", path(folder + "/sdr"), "--fru", "0=" + path(folder + "/fru"), "--sel",
                        path(folder + "/sel")});
  }

  void import_all(const std::string& folder) {
    fs::remove(database());
    on_database({"init"});
    import({"--sdr", path(folder + "/sdr"), "--fru", "0=" + path(folder + "/fru"), "--sel", path(folder + "/sel")});
  }
};

TEST_P(ExportOfChanges, GivesTheSameRowsOrANoteOrFails) {
  size_t noted = 0;
  for (const std::string& column : columns(GetParam())) {
    SCOPED_TRACE(column);
    fs::copy(path("imported.db"), database(), fs::copy_options::overwrite_existing);
    sql("update " + std::string(GetParam()) + " set " + column + " = 77;");
    const std::string changed = tables() + sql("select quote(RecCnt) || quote(AddTimeStamp) from sel_info;");
    const Outcome outcome = export_all("dumps");
    if (outcome.status != 0 || !outcome.err.empty()) {
      ++noted;
      continue;
    }
    import_all("dumps");
    EXPECT_EQ(tables() + sql("select quote(RecCnt) || quote(AddTimeStamp) from sel_info;"), changed);
  }
  EXPECT_GT(noted, 0u);
}

INSTANTIATE_TEST_SUITE_P(Of, ExportOfChanges,
                         testing::Values("compact_sdr", "full_sdr", "fru", "fru_locator_sdr", "sel", "sel_info"),
                         [](const auto& info) { return std::string(info.param); });

TEST_F(Export, OfSensorsAloneNotesTheStringsOfFrus) {
  Bytes locator = fru_locator_record(ascii_field("Board"));
  locator[5] = 0x20;
  locator[6] = 0;
  locator[7] = 0x80;
  import({"--sdr", file("one.sdr", locator), "--fru",
          "0=" + file("fru", fru_image({}, board_area(ascii_field("Maker")), {}))});
  EXPECT_EQ(on_database({"export", "--sdr", path("out.sdr")}).err,
            "qmvctl: note: the strings of FRU 0 are in none of these dumps\n");
}

TEST_F(Export, NotesNumbersThatDoNotFit) {
  sql("insert into sel (RecordID, GeneratorID, EventData2) values (1, '20', 256);");
  EXPECT_EQ(on_database({"export", "--sel", path("out.sel")}).err,
            "qmvctl: note: event 1 is not in the dump as it is in the table\n");
}

TEST_F(Export, OfAnEventThatFitsNoRecordNamesTableAndColumn) {
  sql("insert into sel (RecordID, GeneratorID) values (7, 'xy');");
  const Outcome outcome = on_database({"export", "--sel", path("out.sel")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "qmvctl: " + database() + ": table sel, column GeneratorID of event 7: not two hexadecimal digits\n");
  for (const std::string id : {"0", "-3", "65535"}) {
    sql("update sel set GeneratorID = '20', RecordID = " + id + ";");
    EXPECT_EQ(on_database({"export", "--sel", path("out.sel")}).err,
              "qmvctl: " + database() + ": table sel, column RecordID of event " + id + ": not from 1 to 65534\n");
  }
  EXPECT_FALSE(fs::exists(path("out.sel")));
}

TEST_F(Export, OfAMissingFruFailsAndWritesNothing) {
  const Outcome outcome = on_database({"export", "--sel", path("out.sel"), "--fru", "3=" + path("fru")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + database() + ": there is no FRU 3 of the controller at address 20h\n");
  EXPECT_FALSE(fs::exists(path("out.sel")));
}

TEST_F(Export, DoesNotTouchAnExistingFile) {
  const Outcome outcome = on_database({"export", "--sel", file("mine", ascii("mine"))});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + path("mine") + ": the file exists and is not touched\n");
  EXPECT_EQ(fs::file_size(path("mine")), 4u);
}

TEST_F(Export, ThatFailsLeavesNoFile) {
  import({"--sdr", file("one.sdr", compact_record(ascii_field("Fan")))});
  const Outcome outcome = on_database({"export", "--sdr", path("out.sdr"), "--sel", path("missing/out.sel")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "qmvctl: " + path("missing/out.sel") + ": No such file or directory\n");
  EXPECT_FALSE(fs::exists(path("out.sdr")));
}

TEST_F(Export, ThatIsCutOffLeavesNoFile) {
  import({"--sel", file("one.sel", {1, 0, 2, 1, 0, 0, 0x50, 0x20, 0, 4, 8, 0x50, 0x6F, 3, 0xFF, 0xFF})});
  qmv::test::in_child([this] {
    const rlimit eight_bytes{8, 8};
    setrlimit(RLIMIT_FSIZE, &eight_bytes);
    const Outcome outcome = on_database({"export", "--sel", path("out.sel")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qmvctl: " + path("out.sel") + ": File too large\n");
  });
  EXPECT_FALSE(fs::exists(path("out.sel")));
}

TEST_F(Export, KeepsStringsThatNeedAnotherEncoding) {
  const std::map<std::string, std::string> texts = {
      {"ProdPartNumber", "a"},                                      // looks like the end of fields
      {"ProdSerNumber", std::string(64, 'Z')},                      // six bits a character
      {"BrdPartNumber", std::string(126, '7')},                     // two digits a byte
      {"BrdSerNumber", "\u20AC"},                                   // Unicode
      {"ChassisCustFields", "one, two, " + std::string(100, 'B')},  // two hexadecimal digits a byte
      {"ChassisPartNumber", "T\u00E4\u00B0"},
  };
  import({"--fru", "4=" + file("fru", fru_image({}, {}, {}))});
  for (const auto& [column, text] : texts) sql("update fru set " + column + " = '" + text + "';");
  const Outcome outcome = on_database({"export", "--fru", "4=" + path("out")});
  EXPECT_EQ(outcome.err, "");
  sql("delete from fru;");
  import({"--fru", "4=" + path("out")});
  for (const auto& [column, text] : texts) EXPECT_EQ(sql("select " + column + " from fru;"), text);
}

TEST_F(Export, NotesStringsThatNoEncodingHolds) {
  import({"--fru", "4=" + file("fru", fru_image({}, {}, {}))});
  sql("update fru set ProdMfrName = printf('%.100c', 'x');");
  EXPECT_EQ(on_database({"export", "--fru", "4=" + path("out")}).err,
            "qmvctl: note: FRU 4 is not in the dump as it is in the table\n");
  import({"--fru", "4=" + path("out")});
  EXPECT_EQ(sql("select ProdMfrName from fru;"), std::string(63, 'x'));
}

TEST(PackedText, IsUnpackedToItself) {
  const auto unpacked = [](auto unpack, const std::optional<qmvctl::Bytes>& bytes) {
    return bytes ? unpack(Input("bytes", *bytes)) : "nothing";
  };
  EXPECT_EQ(unpacked(latin1_text, latin1_bytes("T\u00E4\u00FF")), "T\u00E4\u00FF");
  EXPECT_EQ(unpacked(unicode_text, unicode_bytes("a\u00E4\u20AC")), "a\u00E4\u20AC");
  EXPECT_EQ(six_bit_bytes("IPMI"), (qmvctl::Bytes{0x29, 0xDC, 0xA6}));
  EXPECT_EQ(bcd_plus_bytes("0123456789 -.:,_"), (qmvctl::Bytes{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF}));
  EXPECT_EQ(hex_bytes("0AFF10"), (qmvctl::Bytes{0x0A, 0xFF, 0x10}));
}

TEST(PackedText, RefusesWhatItCannotHold) {
  EXPECT_EQ(latin1_bytes("\u0100"), std::nullopt);
  for (const char* text : {"\xFF", "\xC3", "\xE2\x82", "\xC0\x80", "\xC3\x28"})
    EXPECT_EQ(latin1_bytes(text), std::nullopt);
  EXPECT_EQ(six_bit_bytes("a"), std::nullopt);
  EXPECT_EQ(bcd_plus_bytes("123"), std::nullopt);
  EXPECT_EQ(bcd_plus_bytes("1A"), std::nullopt);
  EXPECT_EQ(hex_bytes("0a"), std::nullopt);
}

// Recorded dumps of real servers.
class ExportOfRecordedDumps : public Export {
 protected:
  void SetUp() override {
    const char* folder = std::getenv("QMV_SAMPLES");
    if (!folder) GTEST_SKIP() << "QMV_SAMPLES names no folder of recorded dumps";
    folder_ = folder;
  }

  std::vector<fs::path> files(const std::string& subfolder) const {
    return {fs::directory_iterator(folder_ / subfolder), fs::directory_iterator()};
  }

 private:
  fs::path folder_;
};

TEST_F(ExportOfRecordedDumps, GivesTheSameSensorsAndFrus) {
  const auto images = files("fru");
  for (const fs::path& dump : files("sdr")) {
    SCOPED_TRACE(dump);
    std::vector<std::string> arguments{"--sdr", dump};
    std::vector<int> ids;
    for (const fs::path& image : images) {
      const std::string server = dump.stem().string() + "-fru";
      const std::string name = image.stem();
      if (!name.starts_with(server)) continue;
      const std::string number = name.substr(server.size());
      const bool is_sound = on_database({"import", "--fru", number + "=" + image.string()}).status == 0;
      if (!is_sound) continue;
      arguments.insert(arguments.end(), {"--fru", number + "=" + image.string()});
      ids.push_back(std::stoi(number));
    }
    import(arguments);
    expect_same_again(ids, false);
  }
}

TEST_F(ExportOfRecordedDumps, GivesTheSameStringsOfEveryImage) {
  size_t compared = 0;
  for (const fs::path& image : files("fru")) {
    SCOPED_TRACE(image);
    const bool is_sound = on_database({"import", "--fru", "0=" + image.string()}).status == 0;
    if (!is_sound) continue;
    const std::string before = tables();
    const Outcome outcome = on_database({"export", "--fru", "0=" + path("fru" + std::to_string(++compared))});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    sql("delete from fru;");
    import({"--fru", "0=" + path("fru" + std::to_string(compared))});
    EXPECT_EQ(tables(), before);
  }
  EXPECT_GT(compared, 20u);
}

TEST_F(ExportOfRecordedDumps, GivesTheSameEvents) {
  for (const fs::path& dump : files("sel")) {
    SCOPED_TRACE(dump);
    import({"--sel", dump});
    const std::string before = tables();
    const std::string out = path(dump.filename());
    const Outcome outcome = on_database({"export", "--sel", out});
    EXPECT_EQ(outcome.err, "");
    import({"--sel", out});
    EXPECT_TRUE(tables() == before);
  }
}

}  // namespace
}  // namespace qmvctl::test
