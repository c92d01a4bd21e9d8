// Sensors and FRU locators as a sensor data record repository, in the form that "ipmitool sdr dump" writes.
#ifndef QMVCTL_SDR_ENCODER_H
#define QMVCTL_SDR_ENCODER_H

#include "packed_text.h"
#include "sdr_decoder.h"

namespace qmvctl {

// Encodes what decode_repository() gives, so that it gives the same again; what no table holds is not there. Sensors of
// a shared compact record are put together again where they still say what the record said.
Bytes encode_repository(const Repository& repository);

}  // namespace qmvctl

#endif
