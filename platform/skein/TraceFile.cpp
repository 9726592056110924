#include "skein/TraceFile.h"

#include "skein/Descriptor.h"
#include "vane/Epoch.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

namespace Skein {

namespace Impl {
constinit std::atomic<TraceFile*> defaultTraceFile = nullptr;
}

namespace {

[[noreturn]] void fail(Brindle::String const& fileName, Brindle::String const& reason) {
   throw TraceError("cannot write the trace file " + fileName + ": " + reason);
}

// A name given by mistake must not cost the user a file of another kind.
void requireReplaceable(Brindle::String const& fileName) {
   struct stat status;
   if (stat(fileName.c_str(), &status) != 0) {
      if (errno != ENOENT)
         fail(fileName, std::strerror(errno));
      return;
   }
   if (!S_ISREG(status.st_mode))
      fail(fileName, "it is not a regular file");
   if (status.st_size == 0)
      return;
   Descriptor const file(open(fileName.c_str(), O_RDONLY | O_CLOEXEC));
   std::array<char, 8> magic = {};
   if (file.number() < 0)
      fail(fileName, std::strerror(errno));
   if (read(file.number(), magic.data(), magic.size()) < 0)
      fail(fileName, std::strerror(errno));
   if (magic != FileHeader::fileMagic)
      fail(fileName, "there is a file of another kind; give another name");
}

// A file of that size in the place of `fileName`, mapped into memory. It is made under another name first, so that a
// process that still writes the older one keeps that, and its blocks are reserved, so that no write can fail later.
void* mapNewFile(Brindle::String const& fileName, std::size_t size) {
   requireReplaceable(fileName);
   Brindle::String newName = fileName + ".XXXXXX";
   Descriptor const file(mkostemp(newName.data(), O_CLOEXEC));
   if (file.number() < 0)
      fail(fileName, std::strerror(errno));
   int error = posix_fallocate(file.number(), 0, static_cast<off_t>(size));
   void* memory = MAP_FAILED;
   if (error == 0) {
      memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file.number(), 0);
      error = memory == MAP_FAILED ? errno : 0;
   }
   if (error == 0 && rename(newName.c_str(), fileName.c_str()) != 0) {
      error = errno;
      munmap(memory, size);
   }
   if (error != 0) {
      unlink(newName.c_str());
      fail(fileName, std::strerror(error));
   }
   return memory;
}

std::uint32_t nextGeneration() noexcept {
   static std::atomic<std::uint32_t> last = 0;
   std::uint32_t const generation = last.fetch_add(1, std::memory_order_relaxed) + 1;
   return generation != 0 ? generation : nextGeneration();
}

bool areSame(Description const& a, Description const& b) noexcept {
   return a.kind == b.kind && a.line == b.line && a.sourcePath == b.sourcePath && a.name == b.name &&
          a.typeString == b.typeString && a.format == b.format;
}

} // namespace

TraceFile::TraceFile(Brindle::String const& fileName, Geometry geometry)
      : geometry_(geometry), generation_(nextGeneration()), memory_(mapNewFile(fileName, geometry.fileSize())),
        ringBuf_(*new (memory_)
                       FileHeader{.descriptionCapacity = geometry.descriptions, .slotCapacity = geometry.slots},
                 reinterpret_cast<Slot*>(at(geometry.slotsOffset()))) {
}

TraceFile::~TraceFile() {
   munmap(memory_, geometry_.fileSize());
}

std::uint16_t TraceFile::descriptionIndex(Description const& description) noexcept {
   std::lock_guard const lock(mutex_);
   auto& count = header().descriptionCount;
   std::uint32_t const index = count.load(std::memory_order_relaxed);
   for (std::uint32_t i = 0; i < index; ++i) {
      if (areSame(descriptions()[i], description))
         return static_cast<std::uint16_t>(i);
   }
   if (index == geometry_.descriptions)
      return noDescription;
   new (&descriptions()[index]) Description(description);
   count.store(index + 1, std::memory_order_release);
   return static_cast<std::uint16_t>(index);
}

Component TraceFile::typeIs(Description const& description) noexcept {
   std::uint16_t const index = descriptionIndex(description);
   return index == noDescription ? noComponent : static_cast<Component>(firstType + index);
}

MessageId TraceFile::messageIs(Description const& description) noexcept {
   return std::uint64_t{generation_} << 32 | descriptionIndex(description);
}

std::string_view TraceFile::typeString(Component component) const noexcept {
   return component < firstType ? plainTypeString(component)
                                : fieldText(descriptions()[component - firstType].typeString);
}

void defaultTraceFileIs(std::unique_ptr<TraceFile> file) noexcept {
   if (TraceFile const* const before = Impl::defaultTraceFile.exchange(file.release(), std::memory_order_acq_rel))
      Vane::retireObject(before);
}

void Impl::endBlock(std::uint64_t ticket) noexcept {
   Vane::Pin const pin;
   TraceFile* const file = Skein::defaultTraceFile();
   constexpr unsigned bits = BlockTimerMsg::recordBits;
   if (file != nullptr && static_cast<std::uint16_t>(file->generation()) == ticket >> bits)
      file->ringBuf().blockEnded(ticket & ((std::uint64_t{1} << bits) - 1));
}

} // namespace Skein
