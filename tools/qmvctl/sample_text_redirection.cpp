// Sample: the redirection of the server's serial console, under the names that the library knows.
#include "sample.h"
#include "sample_rows.h"

namespace qmvctl {

namespace {

constexpr textredirectionservice_rec kServices[] = {{
    .Name = "TextRedirectionService1",
    .ElementName = "Text Redirection Service",
    .MaxConcurrentEnabledSAPs = 1,
    .EnabledState = 2,
    .RequestedState = 12,
    .SharingMode = 0,
    .RedirectionServiceType = 0,
}};

constexpr textredirectionsap_rec kAccessPoints[] = {{
    .Name = "TextRedirectionSAP1",
    .ElementName = "Serial Console",
    .EnabledState = 2,
    .RequestedState = 12,
    .TextFlowType = 0,
    .SessionTerminateSequence = "~.",
}};

}  // namespace

void store_sample_text_redirection(Database& database) {
  store_rows(database, "textredirectionservice", kServices, db_set_trs);
  store_rows(database, "textredirectionsap", kAccessPoints, db_set_text_sap);
  store_row(database, "textredirectionsap", [&] {  // the setter leaves the sequence out
    return db_modify_textSAP(database.handle(), kAccessPoints[0].SessionTerminateSequence);
  });
}

}  // namespace qmvctl
