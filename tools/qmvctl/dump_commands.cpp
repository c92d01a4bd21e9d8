// import and export.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <set>

#include "characters.h"
#include "command_groups.h"
#include "export.h"
#include "import.h"
#include "list_command.h"
#include "reports.h"

namespace qmvctl {

namespace {

// "ID=FILE", the ID in decimal or hexadecimal.
FruFile parse_fru(const std::string& text) {
  const size_t sign = text.find('=');
  const auto id = number_of(text.substr(0, sign));
  if (sign == std::string::npos || sign + 1 == text.size() || !id || *id < 0 || *id > 0xFF) {
    throw CLI::ValidationError("--fru", text + " is not ID=FILE with an ID from 0 to 255");
  }
  return {static_cast<int>(*id), text.substr(sign + 1)};
}

std::vector<FruFile> parse_frus(const std::vector<std::string>& texts) {
  std::vector<FruFile> frus;
  for (const std::string& text : texts) {
    const FruFile fru = parse_fru(text);
    const auto is_same = [&](const FruFile& other) { return other.id == fru.id; };
    if (std::any_of(frus.begin(), frus.end(), is_same)) {
      throw CLI::ValidationError("--fru", "FRU " + std::to_string(fru.id) + " is named twice");
    }
    frus.push_back(fru);
  }
  return frus;
}

// The files as they are named on the command line.
struct DumpFiles {
  std::string repository;
  std::vector<std::string> frus;  // "ID=FILE"
  std::string event_log;
};

ImportFiles parse(const DumpFiles& files) {
  return {files.repository, parse_frus(files.frus), files.event_log};
}

// Each dump that is written needs a file of its own.
ImportFiles parse_targets(const DumpFiles& texts) {
  ImportFiles files = parse(texts);
  std::vector<std::string> names{files.repository, files.event_log};
  for (const FruFile& fru : files.frus) names.push_back(fru.file);
  std::set<std::filesystem::path> taken;
  for (const std::string& name : names) {
    if (name.empty() || taken.insert(std::filesystem::path(name).lexically_normal()).second) continue;
    throw CLI::ValidationError("export", name + " is named twice");
  }
  return files;
}

std::shared_ptr<DumpFiles> add_files(CLI::App& command) {
  auto files = std::make_shared<DumpFiles>();
  command.add_option("--sdr", files->repository, "sensor data records, as \"ipmitool sdr dump FILE\"")
      ->type_name("FILE");
  command.add_option("--fru", files->frus, "FRU images, as \"ipmitool fru read ID FILE\"")->type_name("ID=FILE");
  command.add_option("--sel", files->event_log, "event log, as \"ipmitool sel writeraw FILE\"")->type_name("FILE");
  command.require_option(1, 0);
  return files;
}

void print_notes(const Context& context, const std::vector<std::string>& notes) {
  for (const std::string& note : notes) context.err << "qmvctl: note: " << printable(note) << '\n';
}

void import(const Context& context, const ImportFiles& files) {
  Database database = Database::open(context.file);
  Inventory stored;
  {
    Progress progress(context.terminal.has_progress ? &context.err : nullptr);
    stored = import_files(database, files, progress);
  }
  print_notes(context, stored.notes);
  report(context.out, context.form, files, stored);
}

void export_to(const Context& context, const ImportFiles& files) {
  const Exported exported = export_files(Database::open(context.file), files);
  print_notes(context, exported.notes);
  report(context.out, context.form, exported);
}

}  // namespace

void add_dump_commands(CLI::App& app, Context& context) {
  CLI::App* importing = app.add_subcommand("import", "Store raw dumps of a server, all or nothing");
  const auto files = add_files(*importing);
  add_example(*importing, "qmvctl import --sdr server.sdr --fru 0=fru0.bin --sel server.sel");
  importing->callback([&context, files] { import(context, parse(*files)); });

  CLI::App* exporting = app.add_subcommand("export", "Write what the tables hold as raw dumps again");
  const auto targets = add_files(*exporting);
  add_example(*exporting, "qmvctl export --sdr server.sdr --fru 0=fru0.bin --sel server.sel");
  exporting->callback([&context, targets] { export_to(context, parse_targets(*targets)); });
}

}  // namespace qmvctl
