#include "RsvpLer/detail/Bandwidth.h"

#include "tests/detail/SectionCheck.h"
#include "vane/System.h"

#include <limits>

using namespace Rsvp;
using namespace Rsvp::Cli;
using namespace Tests;

namespace {

RsvpLerTunnelSpecId const tun1 = tunnelId("tun1");

class Bandwidth : public testing::Test {
protected:
   // The internal clock at 1000 s, UTC at 1700000000 s.
   Bandwidth() { Vane::System::fixClocks(Brindle::Duration(1000), Brindle::Duration(1700000000)); }
   ~Bandwidth() override { Vane::System::releaseClocks(); }

   // A sub-tunnel with an active and a pending instance; 0 as an epoch means none.
   void subTunnel(std::uint32_t number, std::uint32_t activeEpoch, std::uint32_t pendingEpoch) {
      router.subTunnelStatus(subTunnelId("tun1", number), [&](RsvpLerSubTunnelStatus& status) {
         if (activeEpoch != 0)
            status.activeMbbTunnelConfigId = mbbId("tun1", activeEpoch, number);
         if (pendingEpoch != 0)
            status.pendingMbbTunnelConfigId = mbbId("tun1", pendingEpoch, number);
      });
   }
   Handle<RsvpLerSubTunnelStatusColl> subTunnels() const {
      return router.status->subTunnelStatusCollTable.get()->subTunnelStatusColl(tun1);
   }
   std::uint64_t requested() const { return router.tunnelCommand()->getRequestedBwBpsForSuperTunnel(subTunnels()); }
   Handle<RsvpLerAutoBwConfig> autoBw() const { return router.fathomStatus->autoBwConfig.get(); }
   void enableAutoBw() {
      router.autoBwConfig(tun1, [](RsvpLerTunnelAutoBwConfig& config) { config.enabled = true; });
   }

   Router router;
};

TEST_F(Bandwidth, requestedOfNothing) {
   EXPECT_EQ(router.tunnelCommand()->getRequestedBwBpsForSuperTunnel(nullptr), 0u);
   EXPECT_EQ(router.tunnelCommand()->getRequestedBwBpsForSuperTunnel(Brindle::makeNode<RsvpLerSubTunnelStatusColl>()),
             0u);
   subTunnel(0, 0, 0);
   EXPECT_EQ(requested(), 0u);
   subTunnel(0, 1, 2); // neither instance has a configuration
   EXPECT_EQ(requested(), 0u);
}

TEST_F(Bandwidth, requestedTakesTheReplacement) {
   router.mbbTunnelConfig(mbbId("tun1", 1), 125000);
   router.mbbTunnelConfig(mbbId("tun1", 2), 25000);
   subTunnel(0, 1, 0);
   EXPECT_EQ(requested(), 1000000u);
   subTunnel(0, 1, 2);
   EXPECT_EQ(requested(), 200000u);
   subTunnel(0, 0, 2);
   EXPECT_EQ(requested(), 200000u);
   subTunnel(0, 1, 3); // the replacement has no configuration yet
   EXPECT_EQ(requested(), 1000000u);
   // A replacement that asks for nothing still counts as one.
   router.mbbTunnelConfig(mbbId("tun1", 4), 0);
   subTunnel(0, 1, 4);
   EXPECT_EQ(requested(), 0u);
}

TEST_F(Bandwidth, requestedSumsTheSubTunnels) {
   for (std::uint32_t number : {1u, 2u, 3u}) {
      router.mbbTunnelConfig(mbbId("tun1", 1, number), 1000 * number);
      router.mbbTunnelConfig(mbbId("tun1", 2, number), 10 * number);
   }
   subTunnel(1, 1, 2); // 10
   subTunnel(2, 1, 0); // 2000
   subTunnel(3, 1, 2); // 30
   EXPECT_EQ(requested(), 8u * 2040);
}

TEST_F(Bandwidth, requestedIsModulo) {
   router.mbbTunnelConfig(mbbId("tun1", 1), (std::uint64_t{1} << 61) + 1);
   subTunnel(0, 1, 0);
   EXPECT_EQ(requested(), 8u);
}

TEST_F(Bandwidth, currentRequestedAndAuto) {
   auto const command = router.tunnelCommand();
   auto const expectMembers = [&](Handle<RsvpLerSuperTunnelStatus> const& status,
                                  Handle<RsvpLerAutoBwConfig> const& table, std::string_view members) {
      expectSection(
            [&](auto* renderer, bool showText) {
               command->renderTunnelBandwidth(renderer, tun1, status, table, subTunnels(), showText);
            },
            "", members);
   };
   auto const status = Brindle::makeNode<RsvpLerSuperTunnelStatus>();
   status->currentBandwidth = 125000;
   expectMembers(nullptr, nullptr, R"("currentBandwidth":0,"requestedBandwidth":0,"autoBandwidth":false)");
   expectMembers(status, autoBw(), R"("currentBandwidth":1000000,"requestedBandwidth":0,"autoBandwidth":false)");
   router.autoBwConfig(tun1, [](RsvpLerTunnelAutoBwConfig&) {});
   expectMembers(status, autoBw(), R"("currentBandwidth":1000000,"requestedBandwidth":0,"autoBandwidth":false)");
   enableAutoBw();
   router.mbbTunnelConfig(mbbId("tun1", 1), 250000);
   subTunnel(0, 1, 0);
   expectMembers(status, autoBw(), R"("currentBandwidth":1000000,"requestedBandwidth":2000000,"autoBandwidth":true)");
   expectMembers(status, nullptr, R"("currentBandwidth":1000000,"requestedBandwidth":2000000,"autoBandwidth":false)");
}

TEST_F(Bandwidth, damagedSettingsReadAsOff) {
   enableAutoBw();
   router.fathomStatus->autoBwConfig.get()->markDamaged(tun1, "bad checksum");
   expectSection(
         [&](auto* renderer, bool showText) {
            renderTunnelBandwidthParams(renderer, tun1, autoBw(), nullptr, nullptr, showText);
         },
         "", "");
   EXPECT_EQ(router.fathomStatus->autoBwConfig.get()->lastCorruption(), "bad checksum");
}

struct DetailsRow {
   bool config;
   bool signal;
   bool status;
   std::uint64_t configured;
   std::uint64_t current;
   std::uint64_t requested; // by the one sub-tunnel; bytes per second, all three
   bool autoBw;
   std::string_view line;
   std::string_view member;
};

TEST_F(Bandwidth, details) {
   DetailsRow const rows[] = {
         {false, false, false, 0, 0, 0, false, "   Bandwidth: 0 bps, mode explicit, signaling disabled\n",
          R"("signalBandwidth":false)"},
         {true, false, true, 1250, 125000, 250000, false,
          "   Bandwidth: 10.00 Kbps, mode explicit, signaling disabled\n", R"("signalBandwidth":false)"},
         {true, false, true, 1250, 125000, 250000, true, "   Bandwidth: 10.00 Kbps, mode auto, signaling disabled\n",
          R"("signalBandwidth":false)"},
         {true, true, true, 1250, 125000, 125000, false, "   Bandwidth: 1.00 Mbps, mode explicit\n",
          R"("signalBandwidth":true)"},
         {true, true, true, 1250, 125000, 250000, false,
          "   Bandwidth: 1.00 Mbps, updating to 2.00 Mbps, mode explicit\n", R"("signalBandwidth":true)"},
         {true, true, true, 1250, 125000, 0, true, "   Bandwidth: 1.00 Mbps, updating to 0 bps, mode auto\n",
          R"("signalBandwidth":true)"},
         {true, true, false, 1250, 125000, 250000, false, "   Bandwidth: 0 bps, updating to 2.00 Mbps, mode explicit\n",
          R"("signalBandwidth":true)"},
         {true, true, false, 1250, 0, 0, false, "   Bandwidth: 0 bps, mode explicit\n", R"("signalBandwidth":true)"},
         // Equal as shown, different in fact.
         {true, true, true, 0, 125000, 125001, false, "   Bandwidth: 1.00 Mbps, updating to 1.00 Mbps, mode explicit\n",
          R"("signalBandwidth":true)"},
   };
   auto const command = router.tunnelCommand();
   subTunnel(0, 1, 0);
   for (DetailsRow const& row : rows) {
      SCOPED_TRACE(row.line);
      auto const config = Brindle::makeNode<RsvpLerSuperTunnelConfig>();
      config->signalBandwidth = row.signal;
      config->configuredBandwidth = row.configured;
      auto const status = Brindle::makeNode<RsvpLerSuperTunnelStatus>();
      status->currentBandwidth = row.current;
      router.mbbTunnelConfig(mbbId("tun1", 1), row.requested);
      router.autoBwConfig(tun1, [&](RsvpLerTunnelAutoBwConfig& settings) { settings.enabled = row.autoBw; });
      expectSection(
            [&](auto* renderer, bool showText) {
               command->renderTunnelBandwidthDetails(
                     renderer, tun1, row.config ? Handle<RsvpLerSuperTunnelConfig>(config) : nullptr,
                     row.status ? Handle<RsvpLerSuperTunnelStatus>(status) : nullptr, autoBw(), subTunnels(), showText);
            },
            row.line, row.member);
   }
}

TEST_F(Bandwidth, detailsWithoutSubTunnels) {
   auto const config = Brindle::makeNode<RsvpLerSuperTunnelConfig>();
   config->signalBandwidth = true;
   auto const status = Brindle::makeNode<RsvpLerSuperTunnelStatus>();
   status->currentBandwidth = 125000;
   auto const command = router.tunnelCommand();
   expectSection(
         [&](auto* renderer, bool showText) {
            command->renderTunnelBandwidthDetails(renderer, tun1, config, status, nullptr, nullptr, showText);
         },
         "   Bandwidth: 1.00 Mbps, updating to 0 bps, mode explicit\n", R"("signalBandwidth":true)");
}

TEST_F(Bandwidth, paramsWithStatistics) {
   router.autoBwConfig(tun1, [](RsvpLerTunnelAutoBwConfig& config) {
      config.enabled = true;
      config.adjustmentPeriod = Brindle::Duration(300.75);
      config.minBandwidth = 12500;
      config.maxBandwidth = 1250000;
   });
   router.bwSamplingStats(tun1,
                          [](RsvpLerBwSamplingStats& stats) { stats.nextAdjustmentTime = Brindle::Duration(1100.25); });
   router.bwSamplingStatus(tun1, [](RsvpLerBwSamplingStatus& status) { status.lastSampledBandwidth = 125000; });
   expectSection(
         [&](auto* renderer, bool showText) {
            renderTunnelBandwidthParams(renderer, tun1, autoBw(), router.status->autoBwStats.get(),
                                        router.status->bwSamplingStatusColl.get(), showText);
         },
         "      Adjustment period: 300 seconds\n"
         "      Next adjustment: in 100 seconds\n"
         "      Minimum bandwidth: 100.00 Kbps\n"
         "      Maximum bandwidth: 10.00 Mbps\n"
         "      Last sampled bandwidth: 1.00 Mbps\n",
         R"("autoBandwidthParams":{"adjustmentPeriod":300.750000,"nextAdjustmentTime":1700000100.250000,)"
         R"("minBandwidth":100000,"maxBandwidth":10000000,"lastSampledBandwidth":1000000})");
}

constexpr std::string_view noStatisticsLines = "      Adjustment period: 0 seconds\n"
                                               "      Next adjustment: -\n"
                                               "      Minimum bandwidth: 0 bps\n"
                                               "      Maximum bandwidth: 0 bps\n"
                                               "      Last sampled bandwidth: 0 bps\n";
constexpr std::string_view noStatisticsMembers =
      R"("autoBandwidthParams":{"adjustmentPeriod":0.000000,"minBandwidth":0,"maxBandwidth":0,)"
      R"("lastSampledBandwidth":0})";

TEST_F(Bandwidth, paramsWithoutStatistics) {
   enableAutoBw();
   auto const expectNone = [&](Handle<RsvpLerAutoBwStats> const& stats,
                               Handle<RsvpLerBwSamplingStatusColl> const& samples) {
      expectSection(
            [&](auto* renderer, bool showText) {
               renderTunnelBandwidthParams(renderer, tun1, autoBw(), stats, samples, showText);
            },
            noStatisticsLines, noStatisticsMembers);
   };
   expectNone(nullptr, nullptr);
   expectNone(router.status->autoBwStats.get(), router.status->bwSamplingStatusColl.get());
   // Statistics without a planned adjustment, and those of another tunnel.
   router.bwSamplingStats(tun1, [](RsvpLerBwSamplingStats&) {});
   router.bwSamplingStats(tunnelId("tun2"),
                          [](RsvpLerBwSamplingStats& stats) { stats.nextAdjustmentTime = Brindle::Duration(1100); });
   expectNone(router.status->autoBwStats.get(), router.status->bwSamplingStatusColl.get());
}

TEST_F(Bandwidth, paramsAreLeftOutWhenOff) {
   router.autoBwConfig(tun1, [](RsvpLerTunnelAutoBwConfig& config) { config.minBandwidth = 12500; });
   for (auto const& table : {autoBw(), Handle<RsvpLerAutoBwConfig>()})
      expectSection(
            [&](auto* renderer, bool showText) {
               renderTunnelBandwidthParams(renderer, tun1, table, router.status->autoBwStats.get(),
                                           router.status->bwSamplingStatusColl.get(), showText);
            },
            "", "");
}

TEST_F(Bandwidth, adjustmentPeriodIsCutToWholeSeconds) {
   struct Row {
      double seconds;
      std::string_view shown;
      std::string_view member;
   };
   Row const rows[] = {
         {0.999, "0", "0.999000"},
         {-1, "0", "-1.000000"},
         {std::numeric_limits<double>::quiet_NaN(), "0", "0.000000"},
         {9223372036854775808.0, "9223372036854775808", "9223372036854775808.000000"},
         {18446744073709549568.0, "18446744073709549568", "18446744073709549568.000000"},
         {18446744073709551616.0, "18446744073709551615", "18446744073709551616.000000"},
   };
   for (Row const& row : rows) {
      router.autoBwConfig(tun1, [&](RsvpLerTunnelAutoBwConfig& config) {
         config.enabled = true;
         config.adjustmentPeriod = Brindle::Duration(row.seconds);
      });
      std::string const lines = "      Adjustment period: " + std::string(row.shown) +
                                " seconds\n"
                                "      Next adjustment: -\n"
                                "      Minimum bandwidth: 0 bps\n"
                                "      Maximum bandwidth: 0 bps\n"
                                "      Last sampled bandwidth: 0 bps\n";
      std::string const members = R"("autoBandwidthParams":{"adjustmentPeriod":)" + std::string(row.member) +
                                  R"(,"minBandwidth":0,"maxBandwidth":0,"lastSampledBandwidth":0})";
      expectSection(
            [&](auto* renderer, bool showText) {
               renderTunnelBandwidthParams(renderer, tun1, autoBw(), nullptr, nullptr, showText);
            },
            lines, members);
   }
}

TEST_F(Bandwidth, ofSubTunnel) {
   SectionRow<RsvpLerSubTunnelStatus> const rows[] = {
         {nullptr, "   Bandwidth: 0 bps\n", R"("currentBandwidth":0)"},
         {[](RsvpLerSubTunnelStatus& status) { status.currentBandwidth = 125000; }, "   Bandwidth: 1.00 Mbps\n",
          R"("currentBandwidth":1000000)"},
         {[](RsvpLerSubTunnelStatus& status) { status.currentBandwidth = (std::uint64_t{1} << 61) + 1; },
          "   Bandwidth: 8 bps\n", R"("currentBandwidth":8)"},
   };
   expectRows<RsvpLerSubTunnelStatus>(renderSubTunnelBandwidth, rows);
}

TEST_F(Bandwidth, nextAdjustmentOfSubTunnel) {
   auto const command = router.tunnelCommand();
   auto const expectNext = [&](Handle<RsvpLerAutoBwStats> const& stats, std::string_view line,
                               std::string_view member) {
      expectSection(
            [&](auto* renderer, bool showText) {
               command->renderSubTunnelBwNextAdjustment(renderer, tun1, subTunnelId("tun1", 1), stats, showText);
            },
            line, member);
   };
   Handle<RsvpLerAutoBwStats> const stats = router.status->autoBwStats.get();
   auto const plan = [&](std::uint32_t number, Vane::Optional<Brindle::Duration> moment) {
      router.bwSamplingStats(tun1, [&](RsvpLerBwSamplingStats& record) {
         record.nextAdjustmentTime = Brindle::Duration(5000);
         record.subTunnelBwSamplingStats.insert(subTunnelId("tun1", number), {moment});
      });
   };
   plan(1, Brindle::Duration(1120.5));
   expectNext(stats, "", ""); // automatic bandwidth is off
   enableAutoBw();
   expectNext(stats, "      Next adjustment: in 120 seconds\n", R"("nextAdjustmentTime":1700000120.500000)");
   plan(1, Brindle::Duration(500));
   expectNext(stats, "      Next adjustment: in 0 seconds\n", R"("nextAdjustmentTime":1699999500.000000)");
   plan(1, {});
   expectNext(stats, "      Next adjustment: -\n", "");
   plan(2, Brindle::Duration(1120.5));
   expectNext(stats, "      Next adjustment: -\n", "");
   expectNext(Brindle::makeNode<RsvpLerAutoBwStats>(), "      Next adjustment: -\n", "");
   expectNext(nullptr, "      Next adjustment: -\n", "");
   router.fathomStatus->autoBwConfig.set(nullptr);
   expectNext(stats, "", "");
}

TEST_F(Bandwidth, sampleOfSubTunnel) {
   auto const command = router.tunnelCommand();
   auto const expectSample = [&](Handle<RsvpLerBwSamplingStatusColl> const& samples, std::string_view line,
                                 std::string_view member) {
      expectSection(
            [&](auto* renderer, bool showText) {
               command->renderSubTunnelSampledBandwidth(renderer, tun1, subTunnelId("tun1", 1), samples, showText);
            },
            line, member);
   };
   Handle<RsvpLerBwSamplingStatusColl> const samples = router.status->bwSamplingStatusColl.get();
   auto const sample = [&](std::uint32_t number) {
      router.bwSamplingStatus(tun1, [&](RsvpLerBwSamplingStatus& record) {
         record.lastSampledBandwidth = 9999;
         record.subTunnelBwSamplingStatus.insert(subTunnelId("tun1", number), {62500});
      });
   };
   constexpr std::string_view noneLine = "      Last sampled bandwidth: 0 bps\n";
   constexpr std::string_view noneMember = R"("lastSampledBandwidth":0)";
   sample(1);
   expectSample(samples, "", ""); // automatic bandwidth is off
   enableAutoBw();
   expectSample(samples, "      Last sampled bandwidth: 500.00 Kbps\n", R"("lastSampledBandwidth":500000)");
   sample(2);
   expectSample(samples, noneLine, noneMember);
   expectSample(Brindle::makeNode<RsvpLerBwSamplingStatusColl>(), noneLine, noneMember);
   expectSample(nullptr, noneLine, noneMember);
   router.fathomStatus->autoBwConfig.set(nullptr);
   expectSample(samples, "", "");
}

} // namespace
