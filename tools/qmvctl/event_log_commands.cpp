// sel and watch.
#include <fmt/format.h>

#include <ctime>
#include <limits>
#include <set>

#include "commands.h"
#include "event_log.h"
#include "list_command.h"
#include "reports.h"
#include "text.h"
#include "watch.h"

namespace qmvctl {

namespace {

const Keys kKeys{{"record_id", "sensor_name"}, "1", true, false, true};
const ListCommand kEvents{"sel", "Show or change the event log", list_events, kKeys, "qmvctl sel --last 5 --wide"};
const ListCommand kEventList{"list", "Show the events, as without a subcommand", list_events, kKeys,
                             "qmvctl sel list --type temperature"};

int number_in(const std::string& what, const std::string& text, int least, int most) {
  const auto number = number_of(text);
  if (!number || *number < least || *number > most) {
    throw CLI::ValidationError(what, fmt::format("{} is not a number from {} to {}", text, least, most));
  }
  return static_cast<int>(*number);
}

struct NewEvent {
  std::vector<std::string> bytes;
  std::string generator = "0x20";
  uint32_t time = static_cast<uint32_t>(std::time(nullptr));
};

// The bytes of a Platform Event message behind its generator ID (IPMI 2.0, section 29.3).
sel_rec event_of(const NewEvent& message) {
  constexpr int32_t kSystemEvent = 2;
  const auto byte = [&](size_t i) { return number_in("bytes", message.bytes.at(i), 0, 0xFF); };
  sel_rec event{};
  event.RecordType = kSystemEvent;
  event.TimeStamp = static_cast<int32_t>(message.time);
  store_text(hex(number_in("--generator", message.generator, 0, 0xFF)), event.GeneratorID);
  event.EvMRev = byte(0);
  event.SensorType = byte(1);
  event.SensorNum = byte(2);
  event.EventDir = byte(3) >> 7;
  event.EventType = byte(3) & 0x7F;
  event.EventData1 = byte(4);
  event.EventData2 = byte(5);
  event.EventData3 = byte(6);
  return event;
}

void add_adding(CLI::App& parent, Context& context) {
  constexpr int kBytes = 7;
  CLI::App* command = add_subcommand(parent, "add", "Add an event behind the last one");
  const auto message = std::make_shared<NewEvent>();
  command->add_option("bytes", message->bytes, "of a Platform Event message")
      ->type_name("BYTE")
      ->expected(kBytes)
      ->required();
  command->add_option("--generator", message->generator, "of the generator, 20h when it is not given")
      ->type_name("BYTE");
  command->add_option("--time", message->time, "since 1970-01-01 00:00, now when it is not given")
      ->type_name("SECONDS")
      ->transform(as_number());
  command->footer(
      "The bytes are the message revision (04h), sensor type, sensor number, event\n"
      "direction (bit 7) and event type, and three of event data.\n\n"
      "Example:\n  qmvctl sel add 0x04 0x02 0x47 0x01 0x59 0xFC 0xC9");
  command->callback([&context, message] {
    const sel_rec event = event_of(*message);
    Database database = Database::open(context.file);
    const int32_t id = add_event(database, event);
    report(context.out, context.form, {{"added", id}}, "added event " + std::to_string(id));
  });
}

void add_deleting(CLI::App& parent, Context& context) {
  CLI::App* command = add_subcommand(parent, "delete", "Delete events, all of those that are named or none");
  const auto texts = std::make_shared<std::vector<std::string>>();
  command->add_option("id", *texts, "record IDs")->type_name("ID")->required();
  add_example(*command, "qmvctl sel delete 1 2 0x0A");
  command->callback([&context, texts] {
    std::set<int32_t> ids;
    for (const std::string& text : *texts) ids.insert(number_in("id", text, 0, std::numeric_limits<int>::max()));
    Database database = Database::open(context.file);
    delete_events(database, ids);
    report(context.out, context.form, {{"deleted", ids}}, "deleted " + counted(ids.size(), "event"));
  });
}

void add_clearing(CLI::App& parent, Context& context) {
  CLI::App* command = add_subcommand(parent, "clear", "Delete all events");
  add_example(*command, "qmvctl sel clear");
  command->callback([&context] {
    Database database = Database::open(context.file);
    const size_t count = clear_events(database);
    report(context.out, context.form, {{"cleared", count}}, "deleted " + counted(count, "event"));
  });
}

void add_watch(CLI::App& app, Context& context) {
  CLI::App* command = app.add_subcommand("watch", "Follow the event log as it grows, until ^C");
  const auto last = std::make_shared<uint32_t>(10);
  command->add_option("--last", *last, "begin with the last N events, 10 when it is not given")
      ->type_name("N")
      ->transform(as_number());
  add_example(*command, "qmvctl watch --last 0 --json");
  command->callback([&context, last] { watch_events(Database::open(context.file), context.form, *last, context.out); });
}

}  // namespace

void add_event_log_commands(CLI::App& app, Context& context) {
  CLI::App* command = add_list(app, context, kEvents);
  add_plain_list(*command, context, kEventList);
  add_adding(*command, context);
  add_deleting(*command, context);
  add_clearing(*command, context);
  add_watch(app, context);
}

}  // namespace qmvctl
