#include "RsvpLer/frame/ModuleRecord.h"
#include "host/Show.h"
#include "host/state/LoadState.h"
#include "host/state/StateSummary.h"
#include "tests/faults/EachOrdinal.h"
#include "tests/support/Sanitized.h"
#include "tests/support/SynthText.h"
#include "vane/Epoch.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <ostream>
#include <string>
#include <vector>

// Memory that runs out at the first allocation, at the second, and so on: what was asked for comes through as
// std::bad_alloc or is right all the same, nothing is lost, and the next time all is well.

using namespace Tests;

namespace Tests {

void PrintTo(Shortage shortage, std::ostream* out) {
   *out << (shortage == Shortage::once ? "once" : "from then on");
}

} // namespace Tests

namespace {

// Tunnels of each kind, P2P, split and P2MP, and one amid its replacement; where that takes too long, one that is
// split.
constexpr Host::SynthOptions options =
      isSanitized ? Host::SynthOptions{.tunnels = 1, .seed = 270} : Host::SynthOptions{.tunnels = 5, .seed = 13};

// Calls body() while memory runs out, and checks what is left behind. `body` gives what is wrong with its result.
template<class Body>
Attempt attempted(std::uint64_t ordinal, Shortage shortage, Body const& body) {
   Attempt attempt;
   Vane::collectRetired();
   std::int64_t const before = piecesInUse();
   try {
      FailingNew const shortOfMemory(ordinal, shortage);
      body();
      attempt.reached = FailingNew::reached();
   } catch (std::bad_alloc const&) {
   } catch (std::exception const& error) {
      attempt.wrong = std::string("another exception comes through: ") + error.what();
   }
   Vane::collectRetired();
   if (piecesInUse() != before)
      attempt.wrong += " pieces of memory lost: " + std::to_string(piecesInUse() - before);
   return attempt;
}

class AllocationFaults : public testing::TestWithParam<Shortage> {
protected:
   std::string const text_ = synthText(options);
   Host::StateText const source_{text_};
};

TEST_P(AllocationFaults, whileAStateIsLoaded) {
   std::string const whole = Host::summaryText(Host::loadState("f", source_));
   OrdinalCounts const counts = atEachOrdinal([&](std::uint64_t ordinal) {
      Attempt attempt = attempted(ordinal, GetParam(), [&] { Host::loadState("f", source_); });
      if (Host::summaryText(Host::loadState("f", source_)) != whole)
         attempt.wrong += " the next load is another";
      return attempt;
   });
   EXPECT_GT(counts.tried, 300u);
   EXPECT_LT(counts.endedByDesign, 20u);
}

// The reflected road of the host, into a file in memory.
class Answers {
public:
   void show(Host::ShowTunnelRequest const& request, Host::RouterState const& state) const {
      Host::showTunnels(request, state, file_);
   }
   void show(Host::ShowStatusRequest const& request, Host::RouterState const& state) const {
      Host::showStatus(request, state, file_);
   }
   // What has been written since it was last asked.
   std::string take() const {
      std::string text(static_cast<std::size_t>(lseek(file_, 0, SEEK_END)), ' ');
      EXPECT_EQ(pread(file_, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
      EXPECT_EQ(ftruncate(file_, 0), 0);
      lseek(file_, 0, SEEK_SET);
      return text;
   }

private:
   int file_ = memfd_create("answer", MFD_CLOEXEC);
};

template<class Request>
void expectViewStandsFaults(Request const& request, Host::RouterState const& state, Shortage shortage) {
   Answers const answers;
   answers.show(request, state);
   std::string const whole = answers.take();
   EXPECT_FALSE(whole.empty());
   OrdinalCounts const counts = atEachOrdinal([&](std::uint64_t ordinal) {
      Attempt attempt = attempted(ordinal, shortage, [&] { answers.show(request, state); });
      if (!whole.starts_with(answers.take()))
         attempt.wrong += " another answer was written";
      answers.show(request, state);
      if (answers.take() != whole)
         attempt.wrong += " the next answer is another";
      return attempt;
   });
   EXPECT_GT(counts.tried, 1u);
   EXPECT_EQ(counts.endedByDesign, 0u) << "a view retires nothing";
}

TEST_P(AllocationFaults, whileAViewIsShown) {
   // Brings the module's record into the program.
   ASSERT_EQ(_RsvpLerCliCapi_35b5d92e19a7383a_vaneModule.name, "RsvpLerCliCapi");
   Host::RouterState const state = Host::loadState("f", source_);
   for (Host::Format const format : {Host::Format::text, Host::Format::json}) {
      Host::ShowTunnelRequest plain;
      plain.format = format;
      std::vector<Host::ShowTunnelRequest> requests(7, plain);
      requests[1].detail = true;
      requests[2].lsp = true;
      requests[3].summary = true;
      requests[4].history = true;
      requests[5].history = requests[5].detail = true;
      requests[6].summary = requests[6].subTunnel = true;
      for (Host::ShowTunnelRequest const& request : requests)
         expectViewStandsFaults(request, state, GetParam());
      Host::ShowStatusRequest status;
      status.format = format;
      expectViewStandsFaults(status, state, GetParam());
   }
}

INSTANTIATE_TEST_SUITE_P(Shortages, AllocationFaults, testing::Values(Shortage::once, Shortage::fromThenOn),
                         [](auto const& one) { return one.param == Shortage::once ? "once" : "fromThenOn"; });

} // namespace
