#include "WaylineDll/Store/BuiltInPhases.h"

std::span<const BuiltInPhase> BuiltInPhases() {
  static constexpr BuiltInPhase kPhases[] = {
      {300, L"Before connecting"},
      {700, L"After the network is connected"},
      {1100, L"After the VPN is connected"},
      {1600, L"After disconnecting"},
  };
  return kPhases;
}
