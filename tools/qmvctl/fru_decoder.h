// FRU information storage images, as "ipmitool fru read" writes them (IPMI Platform Management FRU Information Storage
// Definition).
#ifndef QMVCTL_FRU_DECODER_H
#define QMVCTL_FRU_DECODER_H

#include <string>
#include <vector>

#include "input.h"
#include "qmv.h"

namespace qmvctl {

// Replaces the inventory strings of a FRU by those of an image; the other members stay as they are. Checks every
// checksum, also of the multi-record area, whose records fill nothing. Throws InputError where the image is cut or
// wrong. Returns what a person should know of strings that were filled.
std::vector<std::string> decode_fru(const Input& image, fru_rec& fru);

}  // namespace qmvctl

#endif
