// What the commands print: one list, several under a head each, or what they did, in the form that was asked for.
#ifndef QMVCTL_REPORTS_H
#define QMVCTL_REPORTS_H

#include <ostream>
#include <string>
#include <vector>

#include "check.h"
#include "commands.h"
#include "export.h"
#include "import.h"
#include "inventory.h"
#include "listing.h"

namespace qmvctl {

void report(std::ostream& out, const Form& form, const Listing& listing);
void report(std::ostream& out, const Form& form, const std::vector<HeadedListing>& lists);
void report(std::ostream& out, const Form& form, const std::vector<Assets>& classes);

// What an import of these files stored, without the notes.
void report(std::ostream& out, const Form& form, const ImportFiles& files, const Inventory& stored);

// What was done, for programs and for people.
void report(std::ostream& out, const Form& form, const Json& json, const std::string& text);

// "1 event", "2 events"
std::string counted(size_t count, const std::string& what);

void report(std::ostream& out, const Form& form, const Purged& purged);

// What an export wrote, without the notes.
void report(std::ostream& out, const Form& form, const Exported& exported);

// What checks found in files.
struct Checked {
  std::string file;
  std::vector<Finding> findings;
};
size_t problems(const Checked& checked);  // without the notes
void report(std::ostream& out, const Form& form, const std::vector<Checked>& files);

}  // namespace qmvctl

#endif
