#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/output/ScrivoBuffer.h"
#include "RsvpLer/output/SigIntException.h"
#include "tests/properties/DamagedStates.h"
#include "tests/properties/Views.h"
#include "tests/support/FaultyPeer.h"

#include <sys/mman.h>
#include <unistd.h>

// A client that fails at the first write of an answer, at the second, and so on: what has come to it is the beginning
// of the answer, and the command ends by the one exception for it. What faults the writer lets pass and what it doesn't
// is tested beside it; here stand the buffer, the renderer and a whole view in front of it.

using namespace Tests;

namespace {

constexpr std::size_t bufferSize = 700; // many writes in a small answer

class WriteFaults : public testing::Test {
protected:
   ~WriteFaults() override { close(file_); }

   // All tunnels of the state; gives what was thrown, or "".
   std::string render(Peer& with, Form form, View const& view) const {
      peer = &with;
      auto const command = tunnelCommand(state_.router);
      scrivo::ScrivoBuffer buffer(file_, bufferSize, 1, calls);
      scrivo::RendererV2 renderer(static_cast<scrivo::OutputFormat_t>(form), &buffer, true);
      try {
         for (auto const& id : tunnels())
            command->renderTunnel(&renderer, id, view.summary, view.lspDetails, view.detail, view.history,
                                  view.subTunnel);
         renderer.ioflush();
      } catch (scrivo::SigIntException const& interrupt) {
         return interrupt.what();
      }
      return "";
   }

   // Calls check(thrown, peer) for the fault at each write; gives the number of writes.
   template<class Check>
   int atEachWrite(Fault const& fault, Form form, View const& view, Check const& check) const {
      for (int at = 0;; ++at) {
         Peer with{.at = at, .fault = fault};
         std::string const thrown = render(with, form, view);
         if (with.faults == 0)
            return at;
         check(thrown, with);
      }
   }

   std::vector<Rsvp::RsvpLerTunnelSpecId> tunnels() const {
      std::vector<Rsvp::RsvpLerTunnelSpecId> ids;
      tunnelCommand(state_.router)->superTunnelConfigColl()->walk([&](auto const& id, auto const&) {
         ids.push_back(id);
      });
      return ids;
   }

   DamagedState const state_ = damagedState(16);
   int const file_ = memfd_create("answer", MFD_CLOEXEC);
};

TEST_F(WriteFaults, leaveTheBeginningOfTheAnswer) {
   constexpr Fault faults[] = {
         {"EPIPE", Call::write, -1, EPIPE},
         {"EIO", Call::write, -1, EIO},
         {"ENOSPC", Call::write, -1, ENOSPC},
         {"no byte taken", Call::write, 0},
   };
   for (Form const form : forms)
      for (View const& view : tunnelViews) {
         SCOPED_TRACE(view.name);
         Peer healthy;
         ASSERT_EQ(render(healthy, form, view), "");
         for (Fault const& fault : faults) {
            int const writes = atEachWrite(fault, form, view, [&](std::string const& thrown, Peer const& with) {
               EXPECT_EQ(thrown, "client gone") << fault.name;
               EXPECT_EQ(with.writes, with.at + 1) << fault.name << ": nothing more is tried";
               EXPECT_TRUE(healthy.taken.starts_with(with.taken)) << fault.name;
               EXPECT_LT(with.taken.size(), healthy.taken.size()) << fault.name;
            });
            EXPECT_EQ(writes, healthy.writes);
         }
      }
}

TEST_F(WriteFaults, thatPassLeaveTheAnswerWhole) {
   constexpr Fault faults[] = {
         {"EINTR", Call::write, -1, EINTR}, {"EAGAIN", Call::write, -1, EAGAIN}, {"one byte", Call::write, 1}};
   for (Form const form : forms)
      for (View const& view : tunnelViews) {
         SCOPED_TRACE(view.name);
         Peer healthy;
         ASSERT_EQ(render(healthy, form, view), "");
         for (Fault const& fault : faults)
            atEachWrite(fault, form, view, [&](std::string const& thrown, Peer const& with) {
               EXPECT_EQ(thrown, "") << fault.name;
               EXPECT_EQ(with.taken, healthy.taken) << fault.name;
            });
      }
}

} // namespace
