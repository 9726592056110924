#include "RsvpLer/output/ScrivoBuffer.h"

#include "RsvpLer/output/RendererV2.h"
#include "RsvpLer/output/SigIntException.h"
#include "vane/Interrupt.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <utility>

// The buffer over real descriptors. SIGPIPE keeps its default action here: one that is raised ends the test program.

namespace {

using namespace std::chrono_literals;
using scrivo::OutputFormat_t;
using scrivo::RendererV2;
using scrivo::ScrivoBuffer;
using scrivo::SigIntException;

// Two joined descriptors: what is written to `in` can be read from `out`.
struct Channel {
   int in = -1;
   int out = -1;

   Channel() = default;
   Channel(Channel&& other) noexcept : in(std::exchange(other.in, -1)), out(std::exchange(other.out, -1)) {}
   ~Channel() {
      close(in);
      closeOut();
   }
   void closeOut() {
      if (out >= 0)
         close(std::exchange(out, -1));
   }
};

Channel socketChannel() {
   int ends[2];
   EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
   int const size = 1; // the system takes its least
   EXPECT_EQ(setsockopt(ends[0], SOL_SOCKET, SO_SNDBUF, &size, sizeof size), 0);
   Channel channel;
   channel.in = ends[0];
   channel.out = ends[1];
   return channel;
}

Channel pipeChannel(int flags) {
   int ends[2];
   EXPECT_EQ(pipe(ends), 0);
   EXPECT_GT(fcntl(ends[1], F_SETPIPE_SZ, 4096), 0);
   EXPECT_EQ(fcntl(ends[1], F_SETFL, flags), 0);
   Channel channel;
   channel.in = ends[1];
   channel.out = ends[0];
   return channel;
}

Channel terminalChannel() {
   Channel channel;
   termios raw{};
   cfmakeraw(&raw);
   EXPECT_EQ(openpty(&channel.out, &channel.in, nullptr, &raw, nullptr), 0);
   return channel;
}

enum class Kind { socket, blockingPipe, nonBlockingPipe, terminal };

Channel makeChannel(Kind kind) {
   switch (kind) {
   case Kind::socket:
      return socketChannel();
   case Kind::blockingPipe:
      return pipeChannel(0);
   case Kind::nonBlockingPipe:
      return pipeChannel(O_NONBLOCK);
   case Kind::terminal:
      return terminalChannel();
   }
   return {};
}

std::string readAll(int descriptor, std::size_t size) {
   std::string data;
   char part[1000];
   while (data.size() < size) {
      ssize_t const count = read(descriptor, part, sizeof part);
      if (count <= 0)
         break;
      data.append(part, static_cast<std::size_t>(count));
   }
   return data;
}

std::string fileText(int descriptor) {
   std::string text(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), ' ');
   EXPECT_EQ(pread(descriptor, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
   return text;
}

// Lines enough to run any buffer here full many times.
std::string renderLines(RendererV2& renderer, unsigned count) {
   std::string expected;
   for (unsigned i = 0; i < count; ++i) {
      renderer.addText("Line ", i);
      renderer.eol();
      expected += "Line " + std::to_string(i) + "\n";
   }
   return expected;
}

template<class Action>
std::string thrownBy(Action const& action) {
   try {
      action();
   } catch (SigIntException const& e) {
      return e.what();
   }
   return "";
}

class Delivery : public testing::TestWithParam<Kind> {
protected:
   ~Delivery() override { Vane::Interrupt::clear(); }
};

TEST_P(Delivery, ASlowReaderGetsEveryByteInOrder) {
   Channel channel = makeChannel(GetParam());
   constexpr unsigned lines = 40000;
   std::size_t size = 0;
   for (unsigned i = 0; i < lines; ++i)
      size += 6 + std::to_string(i).size();
   std::string received;
   std::thread reader([&] {
      std::this_thread::sleep_for(20ms);
      received = readAll(channel.out, size);
   });
   std::string expected;
   {
      ScrivoBuffer buffer(channel.in, 5000, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      expected = renderLines(renderer, lines);
      renderer.ioflush();
   }
   reader.join();
   EXPECT_EQ(received.size(), expected.size());
   EXPECT_TRUE(received == expected);
}

TEST_P(Delivery, AnInterruptEndsTheWaitForAReader) {
   Channel channel = makeChannel(GetParam());
   ScrivoBuffer buffer(channel.in, 1 << 20, 1);
   RendererV2 renderer(OutputFormat_t::text, &buffer, true);
   std::thread user([] {
      std::this_thread::sleep_for(60ms);
      Vane::Interrupt::request();
   });
   auto const start = std::chrono::steady_clock::now();
   EXPECT_EQ(thrownBy([&] {
                renderLines(renderer, 90000);
                renderer.ioflush();
             }),
             "interrupted");
   EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
   user.join();
   // What was pending has been dropped.
   EXPECT_EQ(thrownBy([&] { renderer.ioflush(); }), "");
}

TEST_P(Delivery, AReaderThatHasGoneIsAClientGone) {
   Channel channel = makeChannel(GetParam());
   channel.closeOut();
   ScrivoBuffer buffer(channel.in, 1 << 20, 1);
   RendererV2 renderer(OutputFormat_t::text, &buffer, true);
   renderer.writeString("answer\n");
   EXPECT_EQ(thrownBy([&] { renderer.ioflush(); }), "client gone");
   EXPECT_EQ(thrownBy([&] { renderer.ioflush(); }), "");
   sigset_t signals;
   ASSERT_EQ(sigpending(&signals), 0);
   EXPECT_EQ(sigismember(&signals, SIGPIPE), 0);
   ASSERT_EQ(pthread_sigmask(SIG_BLOCK, nullptr, &signals), 0);
   EXPECT_EQ(sigismember(&signals, SIGPIPE), 0);
}

TEST_P(Delivery, AReaderThatGoesDuringTheWaitIsAClientGone) {
   Channel channel = makeChannel(GetParam());
   ScrivoBuffer buffer(channel.in, 1 << 20, 1);
   RendererV2 renderer(OutputFormat_t::text, &buffer, true);
   std::thread reader([&] {
      std::this_thread::sleep_for(60ms);
      channel.closeOut();
   });
   EXPECT_EQ(thrownBy([&] {
                renderLines(renderer, 90000);
                renderer.ioflush();
             }),
             "client gone");
   reader.join();
}

INSTANTIATE_TEST_SUITE_P(Kinds, Delivery,
                         testing::Values(Kind::socket, Kind::blockingPipe, Kind::nonBlockingPipe, Kind::terminal));

class ScrivoBufferTest : public testing::Test {
protected:
   ScrivoBufferTest() : file_(memfd_create("answer", 0)) {}
   ~ScrivoBufferTest() override {
      close(file_);
      Vane::Interrupt::clear();
   }

   int file_;
};

TEST_F(ScrivoBufferTest, AFileGetsTheWholeDocument) {
   for (std::size_t capacity : {0u, 1u, 7u, 100u, 1048576u}) {
      ASSERT_EQ(ftruncate(file_, 0), 0);
      lseek(file_, 0, SEEK_SET);
      ScrivoBuffer buffer(file_, capacity, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      std::string const expected = renderLines(renderer, 500);
      renderer.ioflush();
      EXPECT_EQ(fileText(file_), expected) << "capacity " << capacity;
   }
}

TEST_F(ScrivoBufferTest, NothingIsWrittenBeforeTheBufferIsFullOrFlushed) {
   ScrivoBuffer buffer(file_, 16, 1);
   RendererV2 renderer(OutputFormat_t::text, &buffer, true);
   renderer.writeString("0123456789abcdef");
   EXPECT_EQ(fileText(file_), "");
   renderer.writeChar('g');
   EXPECT_EQ(fileText(file_), "0123456789abcdef");
   renderer.ioflush();
   EXPECT_EQ(fileText(file_), "0123456789abcdefg");
   renderer.ioflush();
   EXPECT_EQ(fileText(file_), "0123456789abcdefg");
}

TEST_F(ScrivoBufferTest, DestructionDropsWhatIsPending) {
   {
      ScrivoBuffer buffer(file_, 16, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      renderer.writeString("pending");
   }
   EXPECT_EQ(fileText(file_), "");
}

TEST_F(ScrivoBufferTest, OneReservationBeyondTheCapacityIsServed) {
   for (std::size_t size : {16u, 17u, 31u, 100000u}) {
      ASSERT_EQ(ftruncate(file_, 0), 0);
      lseek(file_, 0, SEEK_SET);
      ScrivoBuffer buffer(file_, 16, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      std::string const large(size, 'x');
      renderer.writeString("before ");
      renderer.writeString(large);
      EXPECT_EQ(fileText(file_), "before ");
      renderer.writeString(" after");
      renderer.ioflush();
      EXPECT_EQ(fileText(file_), "before " + large + " after");
   }
}

TEST_F(ScrivoBufferTest, APendingInterruptComesOutOfTheReserveAndDropsWhatIsPending) {
   ScrivoBuffer buffer(file_, 16, 1);
   RendererV2 renderer(OutputFormat_t::json, &buffer, true);
   renderer.writeString("0123456789");
   Vane::Interrupt::request();
   EXPECT_EQ(thrownBy([&] { renderer.addJsonKeyValuePair("key", "a value"); }), "interrupted");
   EXPECT_FALSE(renderer.atContainerStart);
   Vane::Interrupt::clear();
   renderer.ioflush();
   EXPECT_EQ(fileText(file_), "");
}

TEST_F(ScrivoBufferTest, APendingInterruptDoesNotKeepAFlushFromAReadyReader) {
   for (Kind kind : {Kind::socket, Kind::blockingPipe, Kind::nonBlockingPipe, Kind::terminal}) {
      Channel channel = makeChannel(kind);
      ScrivoBuffer buffer(channel.in, 1024, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      renderer.writeString("answer\n");
      Vane::Interrupt::request();
      EXPECT_EQ(thrownBy([&] { renderer.ioflush(); }), "");
      Vane::Interrupt::clear();
      EXPECT_EQ(readAll(channel.out, 7), "answer\n");
   }
}

TEST_F(ScrivoBufferTest, ADescriptorThatTakesNothingIsAClientGone) {
   int const full = open("/dev/full", O_WRONLY);
   ASSERT_GE(full, 0);
   for (int descriptor : {full, -1, 1000000}) {
      ScrivoBuffer buffer(descriptor, 1024, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      renderer.writeString("answer\n");
      EXPECT_EQ(thrownBy([&] { renderer.ioflush(); }), "client gone") << descriptor;
   }
   close(full);
}

TEST_F(ScrivoBufferTest, AFileAtItsLimitIsAClientGone) {
   rlimit before;
   ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
   rlimit const low{10, before.rlim_max};
   ScrivoBuffer buffer(file_, 1024, 1);
   RendererV2 renderer(OutputFormat_t::text, &buffer, true);
   renderer.writeString("0123456789abcdef");
   ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
   std::string const thrown = thrownBy([&] { renderer.ioflush(); });
   ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
   EXPECT_EQ(thrown, "client gone");
   EXPECT_EQ(fileText(file_), "0123456789");
   sigset_t signals;
   ASSERT_EQ(sigpending(&signals), 0);
   EXPECT_EQ(sigismember(&signals, SIGXFSZ), 0);
}

TEST_F(ScrivoBufferTest, ASigpipeThatWasPendingBeforeStaysSo) {
   sigset_t held;
   sigset_t before;
   sigemptyset(&held);
   sigaddset(&held, SIGPIPE);
   ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &held, &before), 0);
   ASSERT_EQ(raise(SIGPIPE), 0);
   {
      Channel channel = pipeChannel(0);
      channel.closeOut();
      ScrivoBuffer buffer(channel.in, 1024, 1);
      RendererV2 renderer(OutputFormat_t::text, &buffer, true);
      renderer.writeString("answer\n");
      EXPECT_EQ(thrownBy([&] { renderer.ioflush(); }), "client gone");
   }
   sigset_t signals;
   ASSERT_EQ(sigpending(&signals), 0);
   EXPECT_EQ(sigismember(&signals, SIGPIPE), 1);
   timespec const noWait{};
   EXPECT_EQ(sigtimedwait(&held, nullptr, &noWait), SIGPIPE);
   ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &before, nullptr), 0);
}

} // namespace
