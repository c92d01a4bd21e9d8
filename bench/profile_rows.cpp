#include <cstring>

#include "rows.h"

namespace qmv::bench {

namespace {

template <std::size_t Width>
void fill(char (&field)[Width], const std::string& text) {
  std::strncpy(field, text.c_str(), Width - 1);
}

}  // namespace

ssh_capabilities_rec capabilities(int number, int revision) {
  ssh_capabilities_rec made{};
  fill(made.InstanceID, "controller:ssh_capabilities:" + std::to_string(number));
  fill(made.ElementName, "SSH Service Capabilities " + std::to_string(number) + "." + std::to_string(revision));
  fill(made.RequestedStatesSupported, "2,3,11");
  fill(made.SupportedSSHVersions, "3");
  fill(made.SupportedEncryptionAlgorithms, "3,4");
  made.MaxConnections = 4 + revision;
  made.MaxListeningPorts = 1;
  return made;
}

}  // namespace qmv::bench
