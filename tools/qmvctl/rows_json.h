// Records as rows of a listing, and the columns that several listings share.
#ifndef QMVCTL_ROWS_JSON_H
#define QMVCTL_ROWS_JSON_H

#include "listing.h"
#include "qmv.h"

namespace qmvctl {

// What compact and full sensors have in common.
Json to_json(const compact_sdr_rec& sensor);
Json to_json(const full_sdr_rec& sensor);  // with the thresholds, raw and converted
Json to_json(const fru_rec& fru);

// "7.1 System Board", from the members entity_id and entity_instance.
Column entity_column(int width);

}  // namespace qmvctl

#endif
