// associations: the association classes of a registry, and its plug-ins.
#include <climits>
#include <cstdlib>
#include <memory>
#include <new>

#include "commands.h"
#include "rows.h"
#include "text.h"

namespace qmvctl {

namespace {

constexpr const char* kPluginTable = "association_reg";

// Releases an association with its lists. The two of a pair may differ in length, and list 7's length is not kept: each
// is released up to the NULL that ends it.
struct Release {
  void operator()(association_rec* association) const {
    association->Count5 = association->Count7 = INT_MAX;
    FreeDBData(&association, 1);
  }
};

std::unique_ptr<association_rec, Release> association_of(sqlite3_stmt* row) {
  std::unique_ptr<association_rec, Release> association(
      static_cast<association_rec*>(std::calloc(1, sizeof(association_rec))));
  if (!association) throw std::bad_alloc();
  fill_association_data(row, association.get());
  return association;
}

// The elements of a list up to the NULL that ends it; null for a NULL column.
Json to_json(char* const* list) {
  if (!list) return nullptr;
  Json elements = Json::array();
  for (; *list; ++list) elements.push_back(*list);
  return elements;
}

Json to_json(const association_rec& association) {
  return {{"class", text_of(association.ClassName)},
          {"namespace", text_of(association.NameSpace)},
          {"text2", text_of(association.Text2)},
          {"text3", text_of(association.Text3)},
          {"flag4", association.Flag4},
          {"list5", to_json(association.List5)},
          {"list6", to_json(association.List6)},
          {"list7", to_json(association.List7)},
          {"list8", to_json(association.List8)}};
}

// "Antecedent, Dependent"
Column list_column(const std::string& head, int width, const std::string& key) {
  return {head, width, [key](const Json& row) {
            std::string text;
            const char* gap = "";
            for (const Json& element : row.at(key)) {
              text += gap + element.get<std::string>();
              gap = ", ";
            }
            return text;
          }};
}

}  // namespace

Listing list_associations(const Database& database) {
  Listing listing{{text_column("Class", 28, "class"), text_column("Namespace", 12, "namespace"),
                   text_column("Text 2", kWide, "text2"), text_column("Text 3", kWide, "text3"),
                   number_column("Flag 4", kWide, "flag4"), list_column("List 5", 17, "list5"),
                   list_column("List 6", kWide, "list6"), list_column("List 7", 17, "list7"),
                   list_column("List 8", kWide, "list8")},
                  {},
                  "There are no associations."};
  database.query("select * from association;",
                 [&](sqlite3_stmt* row) { listing.rows.push_back(to_json(*association_of(row))); });
  return listing;
}

Listing list_plugins(const Database& database) {
  Listing listing{{text_column("Column 0", 18, "column0"), text_column("Column 1", 18, "column1"),
                   text_column("Column 2", 18, "column2"), text_column("Column 3", 18, "column3")},
                  {},
                  "There are no plug-ins."};
  const auto load = [&](sqlite3*, int32_t* count, association_reg_rec** records) {
    return load_plugins(records, count, database.file().c_str());
  };
  for (const auto& plugin : read_all<association_reg_rec>(database, kPluginTable, load)) {
    listing.rows.push_back({{"column0", text_of(plugin.RegColumn0)},
                            {"column1", text_of(plugin.RegColumn1)},
                            {"column2", text_of(plugin.RegColumn2)},
                            {"column3", text_of(plugin.RegColumn3)}});
  }
  // The library takes a table that it cannot read, or that another process locks, for an empty one.
  if (listing.rows.size() != count_rows(database, kPluginTable)) database.fail_to_read(kPluginTable);
  return listing;
}

}  // namespace qmvctl
