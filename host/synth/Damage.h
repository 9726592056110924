#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>

namespace Host::Synth {

// Makes of a whole and consistent state one as agents may leave it in the worst moment, which still loads. With the
// probability `rate`, from 0 to 1, each row and member is left out, each other member gets any value in its range,
// references to other records and names of tunnels among them, and each member that wasn't there gets one. The
// members of the two big roots, which are the tables, are left out an eighth as often. The same arguments give the same
// state.
void damage(nlohmann::ordered_json& state, double rate, std::uint64_t seed);

} // namespace Host::Synth
