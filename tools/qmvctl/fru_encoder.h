// FRU information storage images, in the form that "ipmitool fru read" writes.
#ifndef QMVCTL_FRU_ENCODER_H
#define QMVCTL_FRU_ENCODER_H

#include "packed_text.h"
#include "qmv.h"

namespace qmvctl {

// Encodes the inventory strings of a FRU, so that decode_fru() gives the same again. An area without a string is left
// out; of a string that no encoding holds, what fits is there.
Bytes encode_fru(const fru_rec& fru);

}  // namespace qmvctl

#endif
