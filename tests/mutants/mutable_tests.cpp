// The unit tests on a library that can be changed.
//
//   mutable_tests                              runs them
//   mutable_tests texts LIBRARY KNOWN [N/M]    are the texts of the library held by its tests? In each fixed text one letter,
//       one blank or tab, one punctuation mark and one conversion of each kind is changed, one at a time, in a process of
//       its own; the tests must notice. LIBRARY is the loaded file with the texts, KNOWN lists the survivors that are
//       explained; N/M tries the N-th of M parts. Prints the other survivors and figures, and exits 1 when there is such
//       a one.
#include <gtest/gtest.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "support/boundary.h"

namespace qmv::test {
namespace {

constexpr unsigned kSeconds = 60;  // of a mutant that does not end

struct Text {
  char* bytes;
  std::string whole;
  std::string tests;  // a filter: those that meet it
};

struct Mutant {
  const Text* text;
  std::size_t at;
  char to;

  std::string name() const {
    std::string changed = text->whole;
    changed[at] = to;
    return changed;
  }
};

// The read-only segments of a loaded file that hold no code, each up to the unwinding tables.
std::vector<std::pair<char*, std::size_t>> constants(const std::string& library) {
  struct Search {
    std::string library;
    std::vector<std::pair<char*, std::size_t>> found;
  } search{library, {}};
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* to) {
        auto& here = *static_cast<Search*>(to);
        if (std::string(info->dlpi_name).find(here.library) == std::string::npos) return 0;
        const auto* const segments = info->dlpi_phdr;
        const auto* const end = segments + info->dlpi_phnum;
        const auto* const unwinding =
            std::find_if(segments, end, [](const auto& segment) { return segment.p_type == PT_GNU_EH_FRAME; });
        for (const auto* segment = segments; segment != end; ++segment) {
          if (segment->p_type != PT_LOAD || segment->p_flags != PF_R) continue;
          std::size_t size = segment->p_memsz;
          if (unwinding != end && unwinding->p_vaddr - segment->p_vaddr < size)
            size = unwinding->p_vaddr - segment->p_vaddr;
          here.found.emplace_back(reinterpret_cast<char*>(info->dlpi_addr + segment->p_vaddr), size);
        }
        return 1;
      },
      &search);
  return search.found;
}

bool is_of_a_text(char byte) {
  return (byte >= ' ' && byte < 0x7f) || byte == '\t' || byte == '\n';
}

// The texts that end with a zero; names in the linker's tables, which the first segment has, are none.
std::vector<Text> texts_of(const std::string& library) {
  std::vector<Text> texts;
  auto segments = constants(library);
  if (!segments.empty()) segments.erase(segments.begin());
  for (const auto& [start, size] : segments) {
    for (char *at = start, *const end = start + size; at < end;) {
      char* last = at;
      while (last < end && is_of_a_text(*last)) ++last;
      if (last - at >= 3 && last < end && *last == 0) texts.push_back({at, std::string(at, last), ""});
      at = last + 1;
    }
  }
  return texts;
}

// What each test met: formats by their place, and the statements that SQLite was given.
struct Meetings : testing::EmptyTestEventListener {
  std::map<std::string, std::set<const char*>> formats;
  std::map<std::string, std::string> statements;

  void OnTestStart(const testing::TestInfo&) override { boundary() = Boundary(); }
  void OnTestEnd(const testing::TestInfo& test) override {
    const std::string name = std::string(test.test_suite_name()) + "." + test.name();
    formats[name] = boundary().formats;
    statements[name] = boundary().all_statements;
  }

  // The tests that met a text as a format, else those that met it in a statement, else all.
  std::string of(const Text& text) const {
    std::string filter;
    for (const auto& [test, met] : formats) {
      const auto format = met.lower_bound(text.bytes);
      if (format != met.end() && *format < text.bytes + text.whole.size()) filter += test + ":";
    }
    if (!filter.empty()) return filter;
    for (const auto& [test, met] : statements)
      if (met.find(text.whole) != std::string::npos) filter += test + ":";
    return filter.empty() ? "*" : filter;
  }
};

// One mutant of each kind that the text has, in its middle: the nearest place of that kind.
void add_mutants(std::vector<Mutant>& mutants, const Text& text) {
  const std::string& whole = text.whole;
  const auto is_conversion = [&](std::size_t i) {
    const std::size_t sign = whole.find_last_of('%', i);
    return sign != std::string::npos && sign != i && std::isalpha(static_cast<unsigned char>(whole[i])) &&
           whole.find_first_not_of(".0123456789", sign + 1) == i;
  };
  const auto add = [&](auto is_of_kind, auto changed) {
    std::size_t best = std::string::npos;
    const auto distance = [&](std::size_t i) {
      return i > whole.size() / 2 ? i - whole.size() / 2 : whole.size() / 2 - i;
    };
    for (std::size_t i = 0; i < whole.size(); ++i)
      if (is_of_kind(i) && (best == std::string::npos || distance(i) < distance(best))) best = i;
    if (best != std::string::npos) mutants.push_back({&text, best, changed(whole[best])});
  };
  const auto letter = [&](std::size_t i) {
    return std::isalnum(static_cast<unsigned char>(whole[i])) && !is_conversion(i) &&
           !std::isdigit(static_cast<unsigned char>(whole[i]));
  };
  add(letter, [](char c) { return c == 'x' || c == 'X' ? 'y' : 'x'; });
  add([&](std::size_t i) { return whole[i] == ' ' || whole[i] == '\t'; }, [](char c) { return c == ' ' ? '\t' : ' '; });
  add([&](std::size_t i) { return std::ispunct(static_cast<unsigned char>(whole[i])) && whole[i] != '%'; },
      [](char c) { return c == ';' ? ':' : ';'; });
  // Quotes in texts that are put between quotes are doubled; the other %q takes a table's name, which is the library's own.
  const auto is_quoted = [&](std::size_t i) {
    const std::size_t sign = whole.find_last_of('%', i);
    return sign != 0 && whole[sign - 1] == '\'';
  };
  const auto is_number = [&](std::size_t i) { return is_conversion(i) && whole[i] != 'q' && whole[i] != 's'; };
  add([&](std::size_t i) { return is_conversion(i) && whole[i] == 'q' && is_quoted(i); }, [](char) { return 's'; });
  add([&](std::size_t i) { return is_conversion(i) && whole[i] == 'q' && !is_quoted(i); }, [](char) { return 'd'; });
  add([&](std::size_t i) { return is_conversion(i) && whole[i] == 's'; }, [](char) { return 'c'; });
  add(is_number, [](char) { return 'x'; });
}

// Whether these tests fail, crash or hang with the mutant.
bool is_noticed_by(const std::string& tests, const Mutant& mutant) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    alarm(kSeconds);
    char* const at = mutant.text->bytes + mutant.at;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    mprotect(reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(at) / page * page), page, PROT_READ | PROT_WRITE);
    *at = mutant.to;
    if (std::freopen("/dev/null", "w", stdout) == nullptr) _exit(2);
    testing::GTEST_FLAG(filter) = tests;
    testing::GTEST_FLAG(fail_fast) = true;
    const int status = RUN_ALL_TESTS();
    _exit(status == 0 ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return !(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

// The tests that meet the text are asked first, which is quick; it may be another text that they met, so then all.
bool is_noticed(const Mutant& mutant) {
  return is_noticed_by(mutant.text->tests, mutant) || is_noticed_by("*", mutant);
}

std::set<std::string> lines_of(const char* file) {
  std::set<std::string> lines;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);)
    if (!line.empty() && line[0] != '#') lines.insert(line);
  return lines;
}

std::string escaped(const std::string& text) {
  std::string one_line;
  for (const char c : text) one_line += c == '\n' ? "\\n" : c == '\t' ? "\\t" : std::string(1, c);
  return one_line;
}

}  // namespace
}  // namespace qmv::test

int main(int argument_count, char** arguments) {
  using namespace qmv::test;
  testing::InitGoogleTest(&argument_count, arguments);
  if (argument_count == 1) return RUN_ALL_TESTS();
  unsigned part = 1, parts = 1;
  const bool is_usage = argument_count >= 4 && argument_count <= 5 && std::string(arguments[1]) == "texts" &&
                        (argument_count == 4 || std::sscanf(arguments[4], "%u/%u", &part, &parts) == 2);
  if (!is_usage || part == 0 || parts == 0) return 2;

  auto* const meetings = new Meetings;
  auto& listeners = testing::UnitTest::GetInstance()->listeners();
  delete listeners.Release(listeners.default_result_printer());
  listeners.Append(meetings);
  if (RUN_ALL_TESTS() != 0) return std::puts("the tests fail without a mutant"), 1;

  std::vector<Text> texts = texts_of(arguments[2]);
  for (Text& text : texts) text.tests = meetings->of(text);
  delete listeners.Release(meetings);
  if (texts.empty()) return std::puts("no text of the library is loaded"), 1;
  if (is_noticed({&texts[0], 0, texts[0].whole[0]}))
    return std::puts("the tests fail with a text that is not changed"), 1;
  std::vector<Mutant> mutants;
  for (const Text& text : texts) add_mutants(mutants, text);

  const std::set<std::string> known = lines_of(arguments[3]);
  std::size_t tried = 0, noticed = 0, explained = 0;
  for (std::size_t i = part - 1; i < mutants.size(); i += parts, ++tried) {
    if (is_noticed(mutants[i])) {
      ++noticed;
    } else if (known.count(escaped(mutants[i].name())) != 0) {
      ++explained;
    } else {
      std::printf("not noticed: %s\n", escaped(mutants[i].name()).c_str());
    }
  }
  std::printf("figure: texts = %zu\nfigure: changed texts = %zu\nfigure: noticed = %zu\nfigure: explained = %zu\n",
              texts.size(), tried, noticed, explained);
  return tried == 0 || noticed + explained != tried;
}
