#include "host/synth/Synth.h"

#include "host/synth/Sink.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>

namespace {

using Host::SynthOptions;
using Host::writeSynth;
using Host::Synth::Ipv4;
using Host::Synth::KeyText;
using Host::Synth::Milliseconds;
using Host::Synth::Sink;

struct CloseFile {
   void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// What `write(file)` leaves in a file.
template<class Write>
std::string written(Write write) {
   char* text = nullptr;
   std::size_t size = 0;
   File file(open_memstream(&text, &size));
   write(file.get());
   file.reset();
   std::string result(text, size);
   std::free(text);
   return result;
}

std::string synth(SynthOptions options) {
   return written([&](std::FILE* file) { EXPECT_EQ(writeSynth(file, options), 0); });
}

template<class... Parts>
std::string put(Parts const&... parts) {
   return written([&](std::FILE* file) {
      Sink sink(file);
      sink.put(parts...);
      EXPECT_EQ(sink.finish(), 0);
   });
}

// The most memory that this process has held so far, in bytes.
long peakMemory() {
   rusage usage{};
   getrusage(RUSAGE_SELF, &usage);
   return usage.ru_maxrss * 1024;
}

TEST(Synth, NoTunnelsGivesEmptyTables) {
   EXPECT_EQ(synth({.tunnels = 0, .seed = 11}),
             "{\n"
             "\"clock\":{\"currentTime\":3456000.000,\"utcTime\":1731576400.000},\n"
             "\"rsvpCliConfig\":{\"mtuSignalingEnabled\":true},\n"
             "\"rsvpLerConfig\":{\"localIntf\":\"lo0\",\"localIntfIp\":\"10.0.12.1\",\"optimizationInterval\":3600},\n"
             "\"tallyFeatureConfigDir\":{\"feature\":{\"47\":1}},\n"
             "\"rsvpLerStatus\":{\n"
             "\"pathSpecConfigColl\":[],\n"
             "\"tunnelSpecColl\":[],\n"
             "\"autoBwStats\":[],\n"
             "\"bwSamplingStatusColl\":[],\n"
             "\"tunnelIndexMap\":[],\n"
             "\"subTunnelIndexMap\":[],\n"
             "\"superTunnelStatusColl\":[],\n"
             "\"subTunnelConfigCollTable\":[],\n"
             "\"subTunnelStatusCollTable\":[],\n"
             "\"mbbTunnelConfigCollTable\":[],\n"
             "\"mbbTunnelStatusCollTable\":[],\n"
             "\"lspGroupStatusCollTable\":[],\n"
             "\"lspRequestConfigCollTable\":[],\n"
             "\"lspRequestStatusCollTable\":[],\n"
             "\"cspfPathKeyMapping\":[]},\n"
             "\"rsvpLerFathomStatus\":{\n"
             "\"superTunnelConfigColl\":[],\n"
             "\"autoBwConfig\":[],\n"
             "\"rsvpLerTunnelHistory\":[],\n"
             "\"rsvpLerSubTunnelHistory\":[]}\n"
             "}\n");
}

TEST(Synth, SameSeedSameBytes) {
   for (std::uint64_t const tunnels : {1u, 2u, 500u}) {
      EXPECT_TRUE(synth({tunnels, 5}) == synth({tunnels, 5})) << tunnels;
   }
}

TEST(Synth, EverySeedItsOwnState) {
   // The seeds after 4 differ from it in the number of the head end, in the number alone, and in the high half.
   std::string const four = synth({500, 4});
   for (std::uint64_t const seed : {std::uint64_t{5}, std::uint64_t{1004}, (std::uint64_t{1} << 40) + 4}) {
      EXPECT_FALSE(synth({500, seed}) == four) << seed;
   }
}

TEST(Synth, SizeOfATunnel) {
   std::size_t const size = synth({2000, 1}).size();
   EXPECT_GT(size, 2000u * 5000);
   EXPECT_LT(size, 2000u * 10000);
}

TEST(Synth, MemoryDoesNotGrowWithTheState) {
   File file(std::fopen("/dev/null", "w"));
   ASSERT_EQ(writeSynth(file.get(), {100, 1}), 0);
   long const before = peakMemory();
   ASSERT_EQ(writeSynth(file.get(), {20000, 1}), 0);
   // The text of 20,000 tunnels has more than 100 MB.
   EXPECT_LT(peakMemory() - before, 4'000'000);
}

TEST(Synth, RefusesMoreTunnelsThanIndexes) {
   for (std::uint64_t const tunnels : {Host::maxSynthTunnels + 1, std::numeric_limits<std::uint64_t>::max()}) {
      EXPECT_EQ(written([&](std::FILE* file) { EXPECT_EQ(writeSynth(file, {tunnels, 1}), ERANGE); }), "");
   }
}

TEST(Synth, FullDiskIsReported) {
   // The small state fails only when it is flushed, the large one on its way.
   for (std::uint64_t const tunnels : {0u, 1u, 1000u}) {
      File file(std::fopen("/dev/full", "w"));
      ASSERT_NE(file, nullptr);
      EXPECT_EQ(writeSynth(file.get(), {tunnels, 1}), ENOSPC) << tunnels;
   }
}

TEST(Synth, ClosedPipeIsReported) {
   auto* const previous = std::signal(SIGPIPE, SIG_IGN);
   for (std::uint64_t const tunnels : {1ull, static_cast<unsigned long long>(Host::maxSynthTunnels)}) {
      int ends[2];
      ASSERT_EQ(pipe(ends), 0);
      close(ends[0]);
      File file(fdopen(ends[1], "w"));
      // A hundred million tunnels end at once, too.
      EXPECT_EQ(writeSynth(file.get(), {tunnels, 1}), EPIPE) << tunnels;
   }
   std::signal(SIGPIPE, previous);
}

TEST(SynthSink, Parts) {
   EXPECT_EQ(put("text", ' ', std::string_view("view")), "text view");
   EXPECT_EQ(put(0u, ' ', std::numeric_limits<std::uint64_t>::max()), "0 18446744073709551615");
   EXPECT_EQ(put(true, false), "truefalse");
   EXPECT_EQ(put(Ipv4{0x0a000109}, Ipv4{0xffffffff}), "\"10.0.1.9\"\"255.255.255.255\"");
   EXPECT_EQ(put(Milliseconds{0}, ' ', Milliseconds{7}, ' ', Milliseconds{61234}, ' ', Milliseconds{5090}),
             "0.000 0.007 61.234 5.090");
   KeyText const key = KeyText().append("{\"name\":\"a").append(std::uint64_t{12}).append("\"");
   EXPECT_EQ(put(key, key.subTunnel(3).instance(4).group(1).request(2)),
             "{\"name\":\"a12\"}"
             "{\"name\":\"a12\",\"subTunnelId\":3,\"epoch\":4,\"groupId\":1,\"configId\":2}");
}

TEST(SynthSink, NothingIsLostWhereTheBufferEnds) {
   std::string expected;
   std::string const produced = written([&](std::FILE* file) {
      Sink sink(file);
      for (std::uint64_t i = 0; i < 60000; i++) {
         sink.put(i, ',', Ipv4{static_cast<std::uint32_t>(i)}, Milliseconds{i});
         expected += std::to_string(i) + ",\"0.0." + std::to_string(i / 256) + "." + std::to_string(i % 256) + "\"" +
                     std::to_string(i / 1000) + "." + std::to_string(1000 + i % 1000).substr(1);
      }
      std::string const longText(1'000'000, 'x');
      sink.put(longText);
      expected += longText;
      EXPECT_EQ(sink.finish(), 0);
   });
   EXPECT_TRUE(produced == expected);
}

TEST(SynthKeyText, IsCutAtItsEnd) {
   KeyText key;
   for (int i = 0; i < 50; i++) {
      key.append("12345").append(std::uint64_t{7});
   }
   EXPECT_EQ(key.text().size(), 160u);
}

} // namespace
