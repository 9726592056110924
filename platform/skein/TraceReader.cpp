#include "skein/TraceReader.h"

#include "skein/Descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Skein {

namespace {

[[noreturn]] void fail(Brindle::String const& fileName, Brindle::String const& reason) {
   throw TraceError("cannot read the trace file " + fileName + ": " + reason);
}

// Appends that many bytes of the file, or as many as are left.
void readMore(Brindle::String const& fileName, Descriptor const& file, std::size_t count,
              std::vector<std::byte>& bytes) {
   std::size_t done = bytes.size();
   bytes.resize(done + count);
   while (done < bytes.size()) {
      ssize_t const got = read(file.number(), bytes.data() + done, bytes.size() - done);
      if (got < 0 && errno == EINTR)
         continue;
      if (got < 0)
         fail(fileName, std::strerror(errno));
      if (got == 0)
         bytes.resize(done);
      done += static_cast<std::size_t>(got);
   }
}

template<class T>
T numberAt(std::byte const* bytes) noexcept {
   T number;
   std::memcpy(&number, bytes, sizeof number);
   return number;
}

// Of a file that begins with these bytes, as many as a header has or all that there are.
Geometry checkedGeometry(Brindle::String const& fileName, std::vector<std::byte> const& bytes) {
   if (bytes.size() < sizeof FileHeader::fileMagic ||
       std::memcmp(bytes.data(), &FileHeader::fileMagic, sizeof FileHeader::fileMagic) != 0)
      fail(fileName, "it is not a trace file");
   if (bytes.size() < sizeof(FileHeader))
      fail(fileName, "it is cut short");
   if (numberAt<std::uint32_t>(bytes.data() + offsetof(FileHeader, byteOrder)) != FileHeader::nativeByteOrder)
      fail(fileName, "it was written on a machine of another byte order, or is damaged");
   Geometry const geometry{numberAt<std::uint32_t>(bytes.data() + offsetof(FileHeader, descriptionCapacity)),
                           numberAt<std::uint32_t>(bytes.data() + offsetof(FileHeader, slotCapacity))};
   if (!geometry.isValid())
      fail(fileName, "it is damaged");
   return geometry;
}

bool isPrintable(std::string_view text) noexcept {
   return std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
}

} // namespace

TraceReader::TraceReader(Brindle::String const& fileName) {
   Descriptor const file(open(fileName.c_str(), O_RDONLY | O_CLOEXEC));
   if (file.number() < 0)
      fail(fileName, std::strerror(errno));
   readMore(fileName, file, sizeof(FileHeader), bytes_);
   Geometry const geometry = checkedGeometry(fileName, bytes_);
   readMore(fileName, file, geometry.fileSize() - bytes_.size(), bytes_);
   if (bytes_.size() < geometry.fileSize())
      fail(fileName, "it is cut short");

   // A file that is being written is read once more: then a slot that a writer was at work on has another state, and
   // every record of the first reading has its description.
   std::vector<std::byte> later;
   if (lseek(file.number(), 0, SEEK_SET) == 0)
      readMore(fileName, file, geometry.fileSize(), later);
   if (later.size() < geometry.fileSize())
      later = bytes_;
   skipped_ = numberAt<std::uint64_t>(later.data() + offsetof(FileHeader, skippedRecords));
   if (!readDescriptions(geometry, later))
      fail(fileName, "its descriptions are damaged");
   readSlots(geometry, later);
}

bool TraceReader::readDescriptions(Geometry const& geometry, std::vector<std::byte> const& bytes) {
   auto const count = numberAt<std::uint32_t>(bytes.data() + offsetof(FileHeader, descriptionCount));
   if (count > geometry.descriptions)
      return false;
   for (std::size_t i = 0; i < count; ++i) {
      descriptions_.push_back(
            numberAt<Description>(bytes.data() + geometry.descriptionsOffset() + i * sizeof(Description)));
      if (!isSound(i))
         return false;
   }
   return true;
}

// A type must have leaves, so that each step into it takes bytes of a record.
bool TraceReader::isSound(std::size_t index) const {
   Description const& description = descriptions_[index];
   bool const isType = description.kind == DescriptionKind::type;
   if ((!isType && description.kind != DescriptionKind::message) || (isType && description.componentCount == 0) ||
       description.componentCount > Description::maxComponents || !isPrintable(fieldText(description.sourcePath)) ||
       !isPrintable(fieldText(description.name)) || !isPrintable(fieldText(description.format)))
      return false;
   Brindle::String leaves;
   for (std::size_t i = 0; i < description.componentCount; ++i) {
      Component const component = description.components[i];
      bool const isEarlierType = component >= firstType && component - firstType < static_cast<int>(index) &&
                                 descriptions_[component - firstType].kind == DescriptionKind::type;
      if (!isEarlierType && (component < stringComponent || component > u8Component))
         return false;
      leaves.append(i == 0 ? "" : ",").append(typeString(component));
   }
   return leaves == fieldText(description.typeString) &&
          std::ranges::count(fieldText(description.format), '{') == description.componentCount;
}

std::string_view TraceReader::typeString(Component component) const noexcept {
   return component < firstType ? plainTypeString(component)
                                : fieldText(descriptions_[component - firstType].typeString);
}

void TraceReader::readSlots(Geometry const& geometry, std::vector<std::byte> const& later) {
   for (std::size_t i = 0; i < geometry.slots; ++i) {
      std::size_t const offset = geometry.slotsOffset() + i * sizeof(Slot);
      std::byte const* const bytes = bytes_.data() + offset;
      auto const state = numberAt<std::uint64_t>(bytes + offsetof(Slot, state));
      bool const isAtRest = (state & 1) == 0 && state == numberAt<std::uint64_t>(later.data() + offset);
      std::uint64_t const number = state / 2;
      if (number != 0 && isAtRest)
         slots_.push_back({number, (number - 1) % geometry.slots == i, bytes});
   }
   std::ranges::sort(slots_, {}, &StoredSlot::number);
}

// The values of a record, taken one after the other.
class TraceReader::Values {
public:
   Values(std::byte const* bytes, std::size_t size) noexcept : left_(bytes, size) {}

   bool isEmpty() const noexcept { return left_.empty(); }
   template<class T>
   bool take(T& number) noexcept {
      if (left_.size() < sizeof number)
         return false;
      number = numberAt<T>(left_.data());
      left_ = left_.subspan(sizeof number);
      return true;
   }
   bool take(std::string_view& text) noexcept {
      std::uint16_t size = 0;
      if (!take(size) || left_.size() < size)
         return false;
      text = {reinterpret_cast<char const*>(left_.data()), size};
      left_ = left_.subspan(size);
      return true;
   }

private:
   std::span<std::byte const> left_;
};

template<class T>
bool TraceReader::putPlain(Twine::Text& text, Values& values) {
   T value{};
   if (!values.take(value))
      return false;
   text.put(value);
   return true;
}

bool TraceReader::putValue(Twine::Text& text, Component component, Values& values) const {
   switch (component) {
   case stringComponent:
      return putPlain<std::string_view>(text, values);
   case u32Component:
      return putPlain<std::uint32_t>(text, values);
   case u8Component:
      return putPlain<std::uint8_t>(text, values);
   default:
      return putFields(text, descriptions_[component - firstType], values);
   }
}

bool TraceReader::putFields(Twine::Text& text, Description const& description, Values& values) const {
   constexpr std::size_t longest = 16384; // no sound record has as much text
   auto const outer = text.open(fieldText(description.format));
   for (std::size_t i = 0; i < description.componentCount; ++i) {
      if (!putValue(text, description.components[i], values) || text.text().size() > longest)
         return false;
   }
   text.close(outer);
   return true;
}

std::optional<TraceRecord> TraceReader::record(std::size_t index) const {
   StoredSlot const& slot = slots_[index];
   auto const message = numberAt<std::uint16_t>(slot.bytes + offsetof(Slot, message));
   auto const size = numberAt<std::uint16_t>(slot.bytes + offsetof(Slot, size));
   if (!slot.isInPlace || message >= descriptions_.size() || descriptions_[message].kind != DescriptionKind::message ||
       size > sizeof(Slot::values))
      return std::nullopt;
   Description const& description = descriptions_[message];
   Values values(slot.bytes + offsetof(Slot, values), size);
   Twine::Text arguments;
   if (!putFields(arguments, description, values) || !values.isEmpty())
      return std::nullopt;

   TraceRecord record;
   record.number = slot.number;
   record.start = numberAt<std::uint64_t>(slot.bytes + offsetof(Slot, start));
   if (auto const duration = numberAt<std::uint64_t>(slot.bytes + offsetof(Slot, duration)); duration != Slot::notEnded)
      record.duration = duration;
   record.thread = numberAt<std::uint32_t>(slot.bytes + offsetof(Slot, thread));
   record.depth = numberAt<std::uint16_t>(slot.bytes + offsetof(Slot, depth));
   record.function = fieldText(description.name);
   record.sourcePath = fieldText(description.sourcePath);
   record.line = description.line;
   record.arguments = arguments.text();
   return record;
}

} // namespace Skein
