#include "RsvpLer/output/RendererV2.h"

#include "RsvpLer/output/ToString.h"
#include "brindle/Assert.h"

#include <algorithm>
#include <cstring>

namespace scrivo {

namespace {

// Up to this length a text is copied and looked through in one pass; a longer one is counted first, and then
// moved as a block.
constexpr std::size_t shortText = 64;

// Up to this length a column is laid out at once. Its fill comes in whole blocks, which may reach beyond the
// column but not beyond the room reserved for it.
constexpr std::size_t fillBlock = 16;
constexpr std::size_t shortColumn = 4 * fillBlock;

void putFill(char* at, std::size_t width, char fill) noexcept {
   for (std::size_t filled = 0; filled < width; filled += fillBlock)
      std::memset(at + filled, fill, fillBlock);
}

template<class Word>
void putOverlapping(char* at, std::string_view text) noexcept {
   auto const first = helpers::loadWord<Word>(text.data());
   auto const last = helpers::loadWord<Word>(text.data() + text.size() - sizeof(Word));
   std::memcpy(at, &first, sizeof first);
   std::memcpy(at + text.size() - sizeof last, &last, sizeof last);
}

// As putBytes. A cell of a table mostly has up to 16 bytes, which two words cover without a call.
char* putCell(char* at, std::string_view text) noexcept {
   if (text.size() > 16)
      return putBytes(at, text);
   if (text.size() >= 8)
      putOverlapping<std::uint64_t>(at, text);
   else if (text.size() >= 4)
      putOverlapping<std::uint32_t>(at, text);
   else if (text.size() >= 2)
      putOverlapping<std::uint16_t>(at, text);
   else if (!text.empty())
      *at = text.front();
   return at + text.size();
}

} // namespace

// The print is repeated only when its text is longer than 100. One of exactly 100 has been cut to 99 by the
// bound and keeps the NUL in the last place; that is meant.
template<class Print>
void RendererV2::printInTwoSteps(Print const& print) {
   char* at = reserve(101);
   std::size_t const length = print(at, 100);
   if (length > 100) {
      at = reserve(length + 1);
      print(at, length + 1);
   }
   commit(at + length);
}

void RendererV2::writeDuration(Brindle::Duration value) {
   printInTwoSteps([&](char* at, std::size_t size) { return Kerf::to_stringb(at, size, value); });
}

void RendererV2::writeLeft(std::size_t width, std::string_view text, char fill) {
   if (std::max(width, text.size()) <= shortColumn) {
      char* const at = reserve(shortColumn);
      putFill(at, width, fill);
      commit(at + std::max(width, static_cast<std::size_t>(putCell(at, text) - at)));
      return;
   }
   printInTwoSteps([&](char* at, std::size_t size) {
      return Kerf::to_stringb(at, size, Kerf::JustifyLeft<std::string_view>{width, text, fill});
   });
}

void RendererV2::writeRight(std::size_t width, std::string_view text, char fill) {
   if (std::max(width, text.size()) <= shortColumn) {
      char* const at = reserve(shortColumn);
      putFill(at, width, fill);
      commit(putCell(at + (width - std::min(width, text.size())), text));
      return;
   }
   printInTwoSteps([&](char* at, std::size_t size) {
      return Kerf::to_stringb(at, size, Kerf::JustifyRight<std::string_view>{width, text, fill});
   });
}

void RendererV2::writeString(Kerf::JustifyRight<std::uint32_t> const& value) {
   if (value.width <= shortColumn) {
      char digits[Kerf::maxDigits<std::uint32_t>];
      writeRight(value.width, {digits, Kerf::putNumber(digits, value.text)}, value.fill);
      return;
   }
   printInTwoSteps([&](char* at, std::size_t size) {
      return Kerf::to_stringb_aright(at, size, value.text, value.width, value.fill);
   });
}

void RendererV2::writeQuotedString(std::string_view str) {
   auto const [size, trivial] = helpers::quotedSize(str);
   char* const dst = reserve(size);
   if (trivial) {
      BRINDLE_ASSERT(str.size() == size);
      putBytes(dst, str);
   } else {
      auto const [trivial2, end] = helpers::jsonQuote(str.data(), str.data() + str.size(), dst);
      BRINDLE_ASSERT(trivial2 == trivial);
      BRINDLE_ASSERT(end == dst + size);
   }
   commit(dst + size);
}

void RendererV2::writeJsonValue(std::string_view text) {
   finishJsonText(reserve(text.size() + 2), text);
}

// Writes the text between double quotes at `at`, where two bytes more than its size are free.
void RendererV2::finishJsonText(char* at, std::string_view text) {
   *at = '"';
   if (text.size() <= shortText && helpers::copyIfTrivial(at + 1, text)) [[likely]] {
      at[text.size() + 1] = '"';
      commit(at + text.size() + 2);
   } else {
      finishLongJsonText(at + 1, text);
   }
}

void RendererV2::finishLongJsonText(char* at, std::string_view text) {
   commit(at);
   writeQuotedString(text);
   writeChar('"');
}

char* RendererV2::beginQuotedPair(bool startsContainer, std::string_view key, std::size_t room) {
   finishJsonText(beginEntry(startsContainer, key.size() + 2), key);
   char* const at = reserve(room + 1);
   *at = ':';
   return at + 1;
}

} // namespace scrivo
