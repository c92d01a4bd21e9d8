#include <cstring>
#include <sstream>

#include "characters.h"
#include "command_test.h"
#include "listing.h"

namespace qmvctl::test {
namespace {

// Imports records and shows them.
class Lists : public CommandTest {
 protected:
  Lists() { on_database({"init"}); }

  void import(const Bytes& repository) {
    const Outcome outcome = on_database({"import", "--sdr", file("server.sdr", repository)});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }

  // +12 V: 0.053 V a count, all thresholds readable, 1 to 6 counts apart.
  static Bytes voltage() {
    Bytes record = full_record(ascii_field("BB +12.0V"));
    record[5] = 0x20;
    record[6] = 0;
    record[8] = 7;
    record[9] = 1;
    record[11] = 2 << 2;
    record[12] = 2;
    record[13] = 1;
    record[18] = 0x3F;
    record[20] = 0;
    record[21] = 4;
    record[23] = 0;
    record[24] = 53;
    record[25] = record[26] = record[27] = 0;
    record[29] = 0xD0;
    for (uint8_t i = 0; i < 6; ++i) record[36 + i] = static_cast<uint8_t>(200 + i);
    return record;
  }

  static Bytes component(uint8_t sensor_type, uint8_t entity, uint8_t instance, uint8_t number) {
    Bytes record = compact_record(ascii_field("Sensor " + std::to_string(number)));
    record[7] = number;
    record[8] = entity;
    record[9] = instance;
    record[12] = sensor_type;
    return record;
  }
};

TEST_F(Lists, SensorsShowThresholdsInTheirUnit) {
  import(voltage());
  const Json thresholds = rows({"sensors"}).at(0).at("thresholds");
  EXPECT_EQ(thresholds.at("upper_non_recoverable"), Json({{"raw", 200}, {"value", 10.6}}));
  EXPECT_EQ(thresholds.at("upper_critical"), Json({{"raw", 201}, {"value", 10.65}}));
  EXPECT_EQ(thresholds.at("upper_non_critical"), Json({{"raw", 202}, {"value", 10.71}}));
  EXPECT_EQ(thresholds.at("lower_non_recoverable"), Json({{"raw", 203}, {"value", 10.76}}));
  EXPECT_EQ(thresholds.at("lower_critical"), Json({{"raw", 204}, {"value", 10.81}}));
  EXPECT_EQ(thresholds.at("lower_non_critical"), Json({{"raw", 205}, {"value", 10.87}}));
}

TEST_F(Lists, SensorsAreATableForPeople) {
  import(voltage());
  EXPECT_EQ(on_database({"sensors"}).out,
            "DeviceID  Name       Type     Entity            Unit\n"
            "20:00:47  BB +12.0V  Voltage  7.1 System Board  Volts\n");
  EXPECT_EQ(on_database({"sensors", "--wide"}).out,
            "DeviceID  Name       Type     Entity            Kind  Unit     LNR     LC    LNC    UNC     UC   UNR\n"
            "20:00:47  BB +12.0V  Voltage  7.1 System Board  full  Volts  10.76  10.81  10.87  10.71  10.65  10.6\n");
}

TEST_F(Lists, ThresholdsOfANonLinearSensorAreRaw) {
  Bytes record = voltage();
  record[23] = 0x70;
  import(record);
  EXPECT_EQ(rows({"sensors"}).at(0).at("thresholds").at("upper_critical"), Json({{"raw", 201}, {"value", nullptr}}));
  EXPECT_NE(on_database({"sensors", "--wide"}).out.find("raw C9h"), std::string::npos);
}

TEST_F(Lists, EventsNameTheirSensorAndItsReadings) {
  import(voltage());
  const Bytes event{1, 0, 2, 0x18, 0x20, 0xB9, 0x4E, 0x20, 0, 4, 2, 0x47, 0x01, 0x59, 0xFC, 0xC9};
  on_database({"import", "--sel", file("server.sel", event)});
  const Json row = rows({"sel"}).at(0);
  EXPECT_EQ(row.at("time"), "2011-11-08 12:27:04");
  EXPECT_EQ(row.at("sensor_name"), "BB +12.0V");
  EXPECT_EQ(row.at("event"), "Upper Critical going high");
  EXPECT_EQ(row.at("direction"), "asserted");
  EXPECT_EQ(row.at("state"), "Critical");
  EXPECT_EQ(row.at("reading"), 13.36);
  EXPECT_EQ(row.at("threshold"), 10.65);
  EXPECT_NE(on_database({"sel", "--wide"}).out.find("13.36 (threshold 10.65) Volts"), std::string::npos);
}

TEST_F(Lists, EventsOfAnotherGeneratorHaveNoSensor) {
  import(voltage());
  const Bytes event{1, 0, 2, 0x18, 0x20, 0xB9, 0x4E, 0x33, 0, 4, 2, 0x47, 0x81, 0x59, 0xFC, 0xC9};
  on_database({"import", "--sel", file("server.sel", event)});
  const Json row = rows({"sel"}).at(0);
  EXPECT_EQ(row.at("generator_id"), "33");
  EXPECT_EQ(row.at("sensor_name"), nullptr);
  EXPECT_EQ(row.at("reading"), nullptr);
  EXPECT_EQ(row.at("direction"), "deasserted");
  EXPECT_EQ(row.at("state"), "Nominal");
}

TEST_F(Lists, EventsThatEndAStateSaySo) {
  sql("insert into sel (RecordID, SensorType, EventType, EventDir, EventData1) "
      "values (1, 8, 11, 0, 0), (2, 8, 11, 1, 0);");
  const std::string out = on_database({"sel"}).out;
  EXPECT_NE(out.find("Fully Redundant  Nominal\n"), std::string::npos) << out;
  EXPECT_NE(out.find("Fully Redundant  Ended\n"), std::string::npos) << out;
}

TEST_F(Lists, EventsGoByTheirSensorToo) {
  import(voltage());
  sql("insert into sel (RecordID, SensorNum, GeneratorID) values (1, 71, '20'), (2, 72, '20'), (3, 71, '20');");
  EXPECT_EQ(rows({"sel", "--id", "bb +12.0v"}).size(), 2u);
  EXPECT_EQ(rows({"sel", "--id", "bb +12.0v", "--last", "1"}).at(0).at("record_id"), 3);
}

TEST_F(Lists, EventTimesBeforeTheClockWasSetAreSaid) {
  Bytes events{1, 0, 2, 12, 0, 0, 0, 0x20, 0, 4, 2, 0x47, 0x01, 0, 0, 0};
  events = events + Bytes{2, 0, 2, 0xFF, 0xFF, 0xFF, 0xFF, 0x20, 0, 4, 2, 0x47, 0x01, 0, 0, 0};
  events = events + Bytes{3, 0, 2, 0, 0, 0, 0xF0, 0x20, 0, 4, 2, 0x47, 0x01, 0, 0, 0};
  on_database({"import", "--sel", file("server.sel", events)});
  const Json rows = this->rows({"sel"});
  EXPECT_EQ(rows.at(0).at("time"), "start + 12 s");
  EXPECT_EQ(rows.at(1).at("time"), "unspecified");
  EXPECT_EQ(rows.at(2).at("time"), "2097-08-05 09:04:00");
}

TEST_F(Lists, ProcessorsAreTheCompactSensorsOfThatType) {
  import(component(0x07, 3, 1, 1) + component(0x08, 3, 2, 2) + component(0x07, 3, 2, 3));
  const Json processors = rows({"processors"});
  ASSERT_EQ(processors.size(), 2u);
  EXPECT_EQ(processors.at(1).at("sensor_number"), 3);
}

TEST_F(Lists, MemoryIsComplete) {
  Bytes records = voltage();
  for (uint8_t number = 1; number <= 3; ++number) records = records + component(0x0C, 7, 1, number);
  for (uint8_t number = 4; number <= 6; ++number) records = records + component(0x01, 32, number, number);
  import(records);
  EXPECT_EQ(sql("select count(*) from compact_sdr where PhysicalElement & 256;"), "6");
  EXPECT_EQ(rows({"memory"}).size(), 3u);  // and none of the empty records behind them
}

TEST_F(Lists, PowerSuppliesAreOneAnEntity) {
  Bytes unit = voltage();
  unit[7] = 9;
  unit[8] = 19;
  import(component(0x08, 10, 2, 1) + component(0x08, 10, 1, 2) + component(0x04, 10, 1, 3) + component(0x08, 20, 1, 4) +
         voltage() + unit);
  const Json supplies = rows({"power-supplies"});
  ASSERT_EQ(supplies.size(), 3u);
  EXPECT_EQ(supplies.at(0).at("entity_instance"), 1);
  EXPECT_EQ(supplies.at(1).at("instance"), "10:2:1:PowerSupply");
  EXPECT_EQ(supplies.at(2).at("instance"), "19:1:9:PowerSupply");
}

TEST_F(Lists, FullSensorsAreShownWithTheirFormulaAndReadings) {
  Bytes record = voltage();
  record[30] = 0x05;  // nominal reading and normal minimum
  record[31] = 230;
  record[33] = 220;
  record[34] = 255;
  record[35] = 0;
  import(record);
  const std::string shown = on_database({"sensors", "show", "BB +12.0V"}).out;
  EXPECT_NE(shown.find("Nominal reading        : 12.19\n"
                       "Normal minimum         : 11.66\n"
                       "Largest reading        : 13.52\n"
                       "Smallest reading       : 0\n"
                       "Linearization          : linear (00h)\n"
                       "M                      : 53\n"
                       "B                      : 0\n"
                       "B exponent             : 0\n"
                       "R exponent             : -3\n"),
            std::string::npos)
      << shown;
  const Json row = rows({"sensors"}).at(0);
  EXPECT_EQ(row.at("readings").at("nominal"), Json({{"raw", 230}, {"value", 12.19}}));
  EXPECT_EQ(row.at("m"), 53);
}

// Wherever their bytes stand, the members come back as the repository had them.
TEST_F(Lists, SensorsAreShownWithEveryMemberOfTheirRecord) {
  import(compact_record(ascii_field("Fan")) + voltage());
  for (const char* table : {"compact_sdr", "full_sdr"}) {
    sql("update " + std::string(table) +
        " set SDRType = 161, SensorInit = 162, SensorCaps = 163, AssertionMask = 41377, DeAssertionMask = 41378, "
        "DiscreteReadingMask = 41379, RateUnit = 164, UnitModifier = 165, PHysterysis = 166, NHysterysis = 167, "
        "OEM = 168, PhysicalElement = 41380, IdStr = 'identity', OtherSensorTypeDesc = 'other';");
  }
  sql("update compact_sdr set RecShareDir = 41381;");
  for (const char* name : {"Fan", "BB +12.0V"}) {
    const std::string shown = on_database({"sensors", "show", name}).out;
    for (const char* text : {"A1h", "A2h", "A3h", "A1A1h", "A1A2h", "A1A3h", "A4h", "A5h", "A6h", "A7h", "A8h", "A1A4h",
                             "identity", "other"}) {
      EXPECT_NE(shown.find(std::string(" : ") + text + "\n"), std::string::npos) << name << ": " << text;
    }
    EXPECT_EQ(shown.find("Record sharing") != std::string::npos, name == std::string("Fan"));
  }
  EXPECT_NE(on_database({"sensors", "show", "Fan"}).out.find(": A1A5h\n"), std::string::npos);
}

TEST_F(Lists, AssetsOfAClassAreFrusWithSensorsAndSensorsAlone) {
  Bytes locator = fru_locator_record(ascii_field("Board"));
  locator[6] = 5;
  locator[12] = 7;
  locator[13] = 1;
  import(voltage() + locator);
  const Json card = rows({"assets", "cim_card"}).at(0);
  EXPECT_EQ(card.at("frus_with_sensors").at("count"), 1);
  const Json pair = card.at("frus_with_sensors").at("rows").at(0);
  EXPECT_EQ(pair.at("fru_id"), 5);
  EXPECT_EQ(pair.at("entity_id"), 7);
  EXPECT_EQ(pair.at("entity_instance"), 1);
  EXPECT_EQ(pair.at("sensor_name"), "BB +12.0V");
  EXPECT_EQ(pair.at("sensor_number"), 0x47);
  EXPECT_EQ(card.at("sensors").at("count"), 1);
  EXPECT_EQ(card.at("sensors").at("rows").at(0).at("sensor_name"), "BB +12.0V");
}

TEST_F(Lists, AssetsWithoutAClassAreAllClasses) {
  const Json all = rows({"assets"});
  ASSERT_EQ(all.size(), 7u);
  EXPECT_EQ(all.at(0).at("class"), "CIM_Slot");
  EXPECT_EQ(all.at(6).at("class"), "CIM_PhysicalMemory");
}

TEST(Table, AlignsByCharactersNotBytes) {
  std::ostringstream out;
  print_table(out, {},
              {{text_column("A", 9, "a"), number_column("N", 9, "n")},
               {{{"a", "\u00E4\u00E4"}, {"n", 5}}, {{"a", "bbb"}, {"n", 10}}},
               ""});
  EXPECT_EQ(out.str(), "A     N\n\u00E4\u00E4    5\nbbb  10\n");
}

constexpr const char* kHostile = "x\x1B[2Jy\nz\x7F \u009Bm \x9Bm \u00E4";

TEST(Table, LetsNoControlCharacterThrough) {
  std::ostringstream out;
  print_table(out, {}, {{text_column("A", 20, "a")}, {{{"a", kHostile}}}, ""});
  EXPECT_EQ(out.str(), "A\nx.[2Jy.z. .m .m \u00E4\n");
}

TEST(Table, CutsDoubleWidthCharactersByTheirPlaces) {
  std::ostringstream out;
  print_table(out, {},
              {{text_column("A", 6, "a"), text_column("B", 72, "b")},
               {{{"a", "\u4E2D\u4E2D\u4E2D\u4E2D"}, {"b", std::string(80, 'b')}}},
               ""});
  EXPECT_EQ(out.str(), "A       B\n\u4E2D\u4E2D~   " + std::string(71, 'b') + "~\n");
}

TEST(Table, CutsTextsWithAMarkWhereALineHasNoRoom) {
  std::ostringstream out;
  const std::string long_text(80, 'c');
  print_table(out, {},
              {{text_column("A", 4, "a"), text_column("B", 3, "b"), text_column("C", 69, "c")},
               {{{"a", "\u00E4bcd"}, {"b", "efgh"}, {"c", long_text}}},
               ""});
  EXPECT_EQ(out.str(), "A     B    C\n\u00E4bcd  ef~  " + long_text.substr(0, 68) + "~\n");
}

TEST(Table, GivesRoomThatIsLeftToColumnsThatAreCut) {
  std::ostringstream out;
  print_table(out, {}, {{text_column("A", 4, "a"), text_column("B", 3, "b")}, {{{"a", "abcdef"}, {"b", "efgh"}}}, ""});
  EXPECT_EQ(out.str(), "A       B\nabcdef  efgh\n");
}

TEST(Table, IsUncutAndCompleteWhenWide) {
  const Listing listing{{text_column("A", 2, "a"), text_column("B", kWide, "b"), text_column("C", kInFull, "c")},
                        {{{"a", "aaaa"}, {"b", "bbbb"}, {"c", "cccc"}}},
                        ""};
  std::ostringstream narrow;
  print_table(narrow, {}, listing);
  EXPECT_EQ(narrow.str(), "A\naaaa\n");
  std::ostringstream wide;
  print_table(wide, {.is_wide = true}, listing);
  EXPECT_EQ(wide.str(), "A     B\naaaa  bbbb\n");
}

TEST(Table, LeavesOutItsHeads) {
  std::ostringstream out;
  print_table(out, {.has_heads = false}, {{text_column("Head", 9, "a")}, {{{"a", "x"}}}, ""});
  EXPECT_EQ(out.str(), "x\n");
  std::ostringstream empty;
  print_table(empty, {.has_heads = false}, {{text_column("Head", 9, "a")}, {}, "There is nothing."});
  EXPECT_EQ(empty.str(), "");
}

TEST(Table, ThatGrowsIsAlignedWithWhatItWas) {
  const std::vector<Column> columns{text_column("ID", 5, "a"), text_column("Type", kWide, "b"),
                                    text_column("Name", 8, "c")};
  for (const bool is_wide : {false, true}) {
    std::ostringstream out;
    Form form{.is_wide = is_wide, .is_growing = true};
    print_table(out, form, {columns, {{{"a", "1"}, {"b", "Temperature"}, {"c", "x"}}}, ""});
    form.has_heads = false;
    print_table(out, form, {columns, {{{"a", "200"}, {"b", "Fan"}, {"c", "x"}}}, ""});
    EXPECT_EQ(out.str(), is_wide ? "ID     Type                  Name\n"
                                   "1      Temperature           x\n"
                                   "200    Fan                   x\n"
                                 : "ID     Name\n1      x\n200    x\n");
  }
}

TEST(Table, ColoursWarningsAndCriticalStatesOnly) {
  Listing listing{
      {text_column("State", 8, "s"), text_column("Name", 8, "n")},
      {{{"s", "Nominal"}, {"n", "a"}}, {{"s", "Warning"}, {"n", "b"}}, {{"s", "Critical"}, {"n", "Critical"}}},
      ""};
  listing.columns[0].is_state = true;
  std::ostringstream out;
  print_table(out, {.has_colours = true}, listing);
  EXPECT_EQ(out.str(), "State     Name\nNominal   a\n\x1B[33mWarning \x1B[0m  b\n\x1B[31mCritical\x1B[0m  Critical\n");
  std::ostringstream in_full;
  print_in_full(in_full, {.has_colours = true}, {listing.columns, {listing.rows.back()}, ""});
  EXPECT_EQ(in_full.str(), "State : \x1B[31mCritical\x1B[0m\nName  : Critical\n");
  std::ostringstream plain;
  print_table(plain, {}, listing);
  EXPECT_EQ(plain.str(), "State     Name\nNominal   a\nWarning   b\nCritical  Critical\n");
}

TEST(RecordInFull, NamesCodesInBracketsAndLeavesOutWhatIsEmpty) {
  std::ostringstream out;
  print_in_full(out, {},
                {{text_column("Name", 9, "n"), name_column("Type", kWide, "t", "c"), text_column("FRU", kInFull, "f")},
                 {{{"n", "Fan"}, {"t", "Temperature"}, {"c", 1}, {"f", ""}}, {{"n", ""}, {"t", "OEM"}, {"c", 192}}},
                 ""});
  EXPECT_EQ(out.str(), "Name : Fan\nType : Temperature (01h)\n\nType : OEM (C0h)\n");
}

TEST(Csv, QuotesCommasQuotesAndLineBreaks) {
  std::ostringstream out;
  const Listing listing{
      {text_column("A", 1, "a"), text_column("B", kWide, "b"), text_column("C", kInFull, "a")},
      {{{"a", "plain"}, {"b", "x,y"}}, {{"a", "say \"hi\""}, {"b", "two\r\nlines"}}, {{"a", "\x1B["}}},
      ""};
  print_csv(out, {}, {{"", "", listing}});
  EXPECT_EQ(out.str(), "A,B\r\nplain,\"x,y\"\r\n\"say \"\"hi\"\"\",\"two\r\nlines\"\r\n.[,\r\n");
}

TEST(Csv, LetsNoControlCharacterThrough) {
  std::ostringstream out;
  print_csv(out, {.has_heads = false}, {{"", "", {{text_column("A", 1, "a")}, {{{"a", kHostile}}}, ""}}});
  EXPECT_EQ(out.str(), "\"x.[2Jy\nz. .m .m \u00E4\"\r\n");
}

TEST(Csv, PutsSeveralListsTogetherUnderTheirNames) {
  std::ostringstream out;
  print_csv(out, {},
            {{"one", "", {{text_column("A", 1, "a"), text_column("B", 1, "b")}, {{{"a", "1"}, {"b", "2"}}}, ""}},
             {"two", "", {{text_column("B", 1, "x"), text_column("C", 1, "y")}, {{{"x", "3"}, {"y", "4"}}}, ""}}});
  EXPECT_EQ(out.str(), "List,A,B,C\r\none,1,2,\r\ntwo,,3,4\r\n");
}

TEST(JsonOutput, ReplacesBytesThatAreNoUtf8) {
  std::ostringstream out;
  print_json(out, {{"name", "A\xFF"}});
  EXPECT_EQ(out.str(), "{\n  \"name\": \"A\uFFFD\"\n}\n");
}

TEST(JsonOutput, EscapesControlCharacters) {
  EXPECT_EQ(json_text({{"a", kHostile}}, -1), R"({"a":"x\u001b[2Jy\nz\u007f \u009bm )"
                                              "\uFFFDm \u00E4\"}");
}

TEST(Printable, HasADotForEachByteThatIsNoUtf8) {
  for (const char* text : {"\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
                           "\xF4\x90\x80\x80", "\xE2\x82", "\x80", "\xFF"}) {
    EXPECT_EQ(printable(text), std::string(std::strlen(text), '.'));
  }
  for (const char* text : {"\u00A0", "\u07FF", "\u0800", "\uFFFF", "\U00010000", "\U0010FFFF"}) {
    EXPECT_EQ(printable(text), text);
  }
}

}  // namespace
}  // namespace qmvctl::test
