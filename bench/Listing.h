#pragma once

#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/text/TunnelOrder.h"
#include "tests/support/Answer.h"
#include "tests/support/Router.h"

#include <memory>
#include <string>
#include <vector>

// A listing as the command writes it, into a buffer of the caller's choice instead of a descriptor.

namespace Bench {

// A print buffer of one mebibyte that forgets what it was given when it is full.
class DroppedBuffer final : public scrivo::PrintBuffer {
public:
   DroppedBuffer() { ioflush(); }
   void ioflush() override {
      chars.writePtr = storage_.get();
      chars.endPtr = storage_.get() + capacity;
   }

protected:
   void allocateSpace(std::size_t) override { ioflush(); }

private:
   static constexpr std::size_t capacity = std::size_t{1} << 20;
   std::unique_ptr<char[]> storage_ = std::make_unique<char[]>(capacity);
};

struct ListedTunnels {
   std::vector<Rsvp::RsvpLerTunnelSpecId> p2p;
   std::vector<Rsvp::RsvpLerTunnelSpecId> p2mp;
};

// The tunnels of the router in the order of a listing.
ListedTunnels listedTunnels(Rsvp::Cli::ShowRsvpLerTunnel const& command);

// The whole answer, from the walk of the table to the last byte. Equal to that of the command.
void list(Rsvp::Cli::ShowRsvpLerTunnel& command, scrivo::RendererV2& renderer, Tests::Flags const& flags);

// The same into a dropped buffer.
void listDropped(Rsvp::Cli::ShowRsvpLerTunnel& command, std::uint32_t format, Tests::Flags const& flags);

} // namespace Bench
