#include "sensors.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <span>

namespace qmv::test {

namespace {

// Four letters: a piece of a text, or an integer. No zero ends the text.
using Word = std::array<char, 4>;
constexpr int kLetters = 26;

Word word_of(int number) {
  Word word;
  for (char& letter : word) {
    letter = static_cast<char>('a' + number % kLetters);
    number /= kLetters;
  }
  return word;
}

int number_of(const Word& word) {
  int number = 0;
  for (std::size_t i = word.size(); i-- > 0;) number = number * kLetters + (word[i] - 'a');
  return number;
}

constexpr std::size_t kFirst = sizeof(compact_sdr_rec::DeviceID) / sizeof(Word);
using Words = std::array<Word, sizeof(compact_sdr_rec) / sizeof(Word)>;
static_assert(sizeof(Words) == sizeof(compact_sdr_rec));

}  // namespace

compact_sdr_rec sensor(const std::string& key, int number) {
  Words words;
  words.fill(word_of(number));
  compact_sdr_rec made;
  std::memcpy(&made, &words, sizeof(made));
  std::memset(made.DeviceID, 0, sizeof(made.DeviceID));
  std::memcpy(made.DeviceID, key.data(), key.size());
  return made;
}

int number_in(const compact_sdr_rec& sensor) {
  Words words;
  std::memcpy(&words, &sensor, sizeof(words));
  for (const Word& word : std::span(words).subspan(kFirst)) {
    if (word != words[kFirst]) return -1;
  }
  return number_of(words[kFirst]);
}

int stored_number(sqlite3* db, const std::string& key) {
  compact_sdr_rec* stored = nullptr;
  if (db_get_compact_sdr(db, key.c_str(), &stored) != 0) return -2;
  const int number = number_in(*stored);
  db_freemem(stored);
  return number;
}

int half_rows(sqlite3* db) {
  compact_sdr_rec* all = nullptr;
  std::int32_t count = 0;
  EXPECT_EQ(0, db_get_all_compact_sdrs(db, &count, &all));
  int halves = 0;
  for (std::int32_t i = 0; i < count; ++i) halves += number_in(all[i]) == -1;
  db_freemem(all);
  return halves;
}

}  // namespace qmv::test
