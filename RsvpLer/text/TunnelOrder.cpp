#include "RsvpLer/text/TunnelOrder.h"

#include "RsvpLer/text/NaturalOrder.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace Rsvp::Cli {

namespace {

bool isNaturallyBefore(std::string_view left, std::string_view right) noexcept {
   return SI::natural::_compare<char, char const*>(left.data(), left.data() + left.size(), right.data(),
                                                   right.data() + right.size());
}

// The names of a sort as keys whose bytes compare in natural order, one behind the other in one piece of memory.
class NameKeys {
public:
   explicit NameKeys(std::vector<RsvpLerTunnelSpecId> const& tunnels) {
      ends_.reserve(tunnels.size() + 1);
      ends_.push_back(0);
      for (RsvpLerTunnelSpecId const& tunnel : tunnels)
         add(tunnel.name);
      commonPrefix_ = keyOf(0).size();
      for (std::size_t i = 1; i < tunnels.size(); ++i)
         limitPrefix(keyOf(i));
   }

   std::string_view keyOf(std::size_t tunnel) const noexcept {
      return {bytes_.data() + ends_[tunnel], ends_[tunnel + 1] - ends_[tunnel]};
   }
   // The first bytes in which the keys may differ, as a number: of two, the lower one belongs to the lower key.
   std::uint64_t headOf(std::size_t tunnel) const noexcept {
      std::string_view const rest = keyOf(tunnel).substr(commonPrefix_);
      std::uint64_t head = 0;
      for (std::size_t i = 0; i < sizeof head; ++i)
         head = head << 8 | (i < rest.size() ? static_cast<unsigned char>(rest[i]) : 0);
      return head;
   }

private:
   void add(std::string_view name) {
      std::size_t const begin = ends_.back();
      bytes_.resize(begin + SI::natural::sortKeyRoom(name.size()));
      char* const end = SI::natural::putSortKey(bytes_.data() + begin, name);
      ends_.push_back(static_cast<std::size_t>(end - bytes_.data()));
   }
   void limitPrefix(std::string_view key) noexcept {
      std::string_view const prefix = keyOf(0).substr(0, commonPrefix_);
      auto const differs = std::mismatch(prefix.begin(), prefix.end(), key.begin(), key.end());
      commonPrefix_ = static_cast<std::size_t>(differs.first - prefix.begin());
   }

   std::vector<char> bytes_;
   std::vector<std::size_t> ends_; // those of tunnel i are from ends_[i] to ends_[i + 1]
   std::size_t commonPrefix_ = 0;
};

} // namespace

bool isListedBefore(RsvpLerTunnelSpecId const& left, RsvpLerTunnelSpecId const& right) noexcept {
   if (left.name == right.name)
      return left.source < right.source;
   if (isNaturallyBefore(left.name, right.name))
      return true;
   if (isNaturallyBefore(right.name, left.name))
      return false;
   return left.name < right.name;
}

void sortTunnels(std::vector<RsvpLerTunnelSpecId>& tunnels) {
   if (tunnels.size() < 2)
      return;
   NameKeys const keys(tunnels);
   struct Place {
      std::uint64_t head;
      std::size_t tunnel;
   };
   std::vector<Place> places;
   places.reserve(tunnels.size());
   for (std::size_t i = 0; i < tunnels.size(); ++i)
      places.push_back({keys.headOf(i), i});
   std::sort(places.begin(), places.end(), [&](Place const& left, Place const& right) {
      if (left.head != right.head)
         return left.head < right.head;
      int const order = keys.keyOf(left.tunnel).compare(keys.keyOf(right.tunnel));
      return order != 0 ? order < 0 : tunnels[left.tunnel] < tunnels[right.tunnel];
   });
   std::vector<RsvpLerTunnelSpecId> sorted;
   sorted.reserve(tunnels.size());
   for (Place const& place : places)
      sorted.push_back(std::move(tunnels[place.tunnel]));
   tunnels = std::move(sorted);
}

} // namespace Rsvp::Cli
