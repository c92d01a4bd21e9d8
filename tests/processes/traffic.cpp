#include "traffic.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "processes_test.h"
#include "qmv.h"

namespace qmv::test::traffic {

namespace {

// A text of one digit, and the integer that consists of the same bytes.
using Word = std::array<char, 4>;

std::int32_t number_from(char digit) {
  const Word word = {digit};
  std::int32_t number;
  std::memcpy(&number, &word, sizeof(number));
  return number;
}

template <class Record>
Record filled(char digit) {
  std::array<Word, sizeof(Record) / sizeof(Word)> words;
  words.fill({digit});
  Record record;
  static_assert(sizeof(words) == sizeof(record));
  std::memcpy(&record, &words, sizeof(record));
  return record;
}

// Nothing in it comes from a process of another digit.
template <class Record>
void expect_only(char digit, const Record& record) {
  std::array<Word, sizeof(Record) / sizeof(Word)> words;
  std::memcpy(&words, &record, sizeof(words));
  for (const Word& word : words) {
    const bool is_a_digit = word[0] >= '0' && word[0] <= '9' && word[1] == 0;
    EXPECT_TRUE(!is_a_digit || word[0] == digit) << word[0];
  }
}

template <class Record>
void take_all(char digit, std::int32_t status, Record* records, std::int32_t count) {
  EXPECT_EQ(0, status);
  for (std::int32_t i = 0; i < count; ++i) expect_only(digit, records[i]);
  db_freemem(records);
}

template <class Record>
void take_one(char digit, std::int32_t status, Record* record) {
  ASSERT_EQ(0, status);
  expect_only(digit, *record);
  db_freemem(record);
}

// Arguments and results by the function's shape. A record of the caller's may hold the key.

template <class Record>
void use(std::int32_t (*set)(sqlite3*, const Record*), sqlite3* db, char digit) {
  const Record record = filled<Record>(digit);
  EXPECT_EQ(0, set(db, &record));
}

void use(std::int32_t (*count)(sqlite3*, std::int32_t*), sqlite3* db, char) {
  std::int32_t rows = -1;
  EXPECT_EQ(0, count(db, &rows));
  EXPECT_GE(rows, 0);
}

template <class Record>
void use(std::int32_t (*get_all)(sqlite3*, std::int32_t*, Record**), sqlite3* db, char digit) {
  Record* records = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = get_all(db, &count, &records);
  take_all(digit, status, records, count);
}

template <class Record>
void use(std::int32_t (*get_all)(sqlite3*, Record**, std::int32_t*), sqlite3* db, char digit) {
  Record* records = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = get_all(db, &records, &count);
  take_all(digit, status, records, count);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, Record**), sqlite3* db, char digit) {
  Record* record = nullptr;
  const std::int32_t status = get(db, &record);
  take_one(digit, status, record);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, const char*, Record**), sqlite3* db, char digit) {
  const char key[] = {digit, '\0'};
  Record* record = nullptr;
  const std::int32_t status = get(db, key, &record);
  take_one(digit, status, record);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, std::int32_t, Record**), sqlite3* db, char digit) {
  Record* record = nullptr;
  const std::int32_t status = get(db, number_from(digit), &record);
  take_one(digit, status, record);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, Record**), sqlite3* db,
         char digit) {
  const std::int32_t key = number_from(digit);
  Record* record = nullptr;
  const std::int32_t status = get(db, key, key, key, key, &record);
  take_one(digit, status, record);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, Record*), sqlite3* db, char digit) {
  Record record = filled<Record>(digit);
  EXPECT_EQ(0, get(db, &record));
  expect_only(digit, record);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, const char*, Record*), sqlite3* db, char digit) {
  const char key[] = {digit, '\0'};
  Record record = {};
  EXPECT_EQ(0, get(db, key, &record));
  expect_only(digit, record);
}

template <class Record>
void use(std::int32_t (*get)(sqlite3*, Record*, std::int32_t*), sqlite3* db, char digit) {
  Record record = filled<Record>(digit);
  std::int32_t count = 0;
  EXPECT_EQ(0, get(db, &record, &count));
  EXPECT_EQ(1, count);
  expect_only(digit, record);
}

template <auto kFunction>
constexpr Call kCall = [](sqlite3* db, char digit) { use(kFunction, db, digit); };

// Functions of shapes of their own.

void add_event(sqlite3* db, char digit) {
  const sel_rec event = filled<sel_rec>(digit);
  EXPECT_EQ(0, db_addsel(db, &event, 0));
}

void check_sensor_type(sqlite3* db, char digit) {
  EXPECT_EQ(0, db_check_is_entity_id_equals_to_sen_type(db, number_from(digit), number_from(digit)));
}

void list_physical_assets(sqlite3* db, char digit) {
  fru_sdr_rec* records = nullptr;
  std::int32_t count = 0;
  const std::int32_t status = db_get_all_physicalasset_element(db, &count, &records, number_from(digit));
  take_all(digit, status, records, count);
}

constexpr Call kWrites[] = {
    kCall<db_set_compact_sdr_info>,
    kCall<db_set_full_sdr_info>,
    kCall<db_set_fru_info>,
    kCall<db_set_fru_locator_sdr_info>,
    kCall<db_set_device>,
    add_event,
    kCall<db_set_elec>,
    kCall<db_set_sshcapabilities>,
    kCall<db_set_power_mgt_service>,
    kCall<db_set_boot_setting_data>,
    kCall<db_set_boot_order>,
    kCall<db_set_role>,
    kCall<db_set_assign_role>,
    kCall<db_set_ip_assignment_settingdata>,
    kCall<db_set_static_ip_assignment_settingdata>,
    kCall<db_set_protocol_service>,
    kCall<db_set_text_sap>,
    kCall<db_set_pwds_capablities>,
    kCall<db_set_EventType_Data>,
    kCall<db_set_error_info>,
    kCall<db_set_req_state_change>,
    kCall<db_set_listener_destination>,
    kCall<db_set_indication_filter_cimxml>,
    kCall<db_set_indication_subscription>,
};

constexpr Call kReads[] = {
    kCall<db_get_all_compact_sdrs>,
    kCall<db_get_compact_sdr>,
    kCall<db_get_memory_cnt>,
    kCall<db_get_all_full_sdrs>,
    kCall<db_get_full_sdr>,
    kCall<db_get_fru_cnt>,
    kCall<db_get_all_fru_info>,
    kCall<db_get_fru_info>,
    kCall<db_get_fru_locator_sdr_info>,
    kCall<db_get_device_bytype>,
    kCall<db_getnumofsels>,
    kCall<db_get_all_sel_records>,
    kCall<db_get_sel_record>,
    kCall<db_get_all_fru_compact_sdr>,
    kCall<db_get_fru_full_sdr_cnt>,
    check_sensor_type,
    list_physical_assets,
    kCall<db_get_all_elec>,
    kCall<db_get_elec>,
    kCall<db_get_sshcapabilities>,
    kCall<db_get_all_power_mgt_service>,
    kCall<db_get_boot_setting_data>,
    kCall<db_get_boot_order>,
    kCall<db_get_all_role>,
    kCall<db_get_assign_role>,
    kCall<db_get_ip_assignment_setting_data>,
    kCall<db_get_all_static_ip_assignment_settingdata>,
    kCall<db_get_all_protocol_service>,
    kCall<db_get_textSAP>,
    kCall<db_get_trs>,
    kCall<db_get_pwds_capablities>,
    kCall<db_get_MessageID>,
    kCall<db_get_all_error_info>,
    kCall<db_get_error_info>,
    kCall<db_get_all_concretejob>,
    kCall<db_get_req_state_change>,
    kCall<db_get_all_listener_destination>,
    kCall<db_get_indication_filter_cimxml>,
    kCall<db_get_indication_subscription_cnt>,
};

}  // namespace

std::span<const Call> writes() {
  return kWrites;
}

std::span<const Call> reads() {
  return kReads;
}

void make_rows() {
  const Connection instances;
  const Connection others(tmp_db_init);
  for (sqlite3* db : {static_cast<sqlite3*>(instances), static_cast<sqlite3*>(others)}) {
    EXPECT_EQ(0, db_execute(db, "insert into textredirectionservice (Name) values ('TextRedirectionService1');"));
  }
}

}  // namespace qmv::test::traffic
