#pragma once

#include "host/state/LoadState.h"
#include "host/state/StateError.h"

#include <string>
#include <string_view>
#include <vector>

// What the tests of loaded states have in common.

namespace Host::Test {

inline RouterState load(std::string_view text) {
   return loadState("f", StateText(text));
}

inline Lattice::IpGenAddr address(std::string_view text) {
   return Lattice::IpGenAddr::parse(text).value();
}

inline std::vector<std::string> texts(auto const& addresses) {
   std::vector<std::string> result;
   for (Lattice::IpGenAddr const& one : addresses)
      result.push_back(one.stringValue());
   return result;
}

using Texts = std::vector<std::string>;

inline std::string statusTable(std::string const& table, std::string const& rows) {
   return R"({"rsvpLerStatus":{")" + table + "\":[" + rows + "]}}";
}

} // namespace Host::Test
