#include "skein/MsgDesc.h"

#include <algorithm>

namespace Skein {

MsgDesc::MsgDesc(TraceFile& file, std::string_view typeName) noexcept : file_(file) {
   append(description_.name, typeName);
}

MsgDesc::MsgDesc(TraceFile& file, std::string_view sourcePath, std::uint32_t line, std::string_view function) noexcept
      : file_(file) {
   description_.kind = DescriptionKind::message;
   description_.line = line;
   append(description_.sourcePath, sourcePath);
   append(description_.name, function);
}

template<std::size_t size>
void MsgDesc::append(std::array<char, size>& field, std::string_view text) noexcept {
   std::size_t const used = fieldText(field).size();
   fits_ = fits_ && text.size() < size - used;
   if (fits_)
      std::ranges::copy(text, field.begin() + static_cast<std::ptrdiff_t>(used));
}

void MsgDesc::addText(std::string_view text) noexcept {
   append(description_.format, text);
}

void MsgDesc::addComponent(Component component) noexcept {
   fits_ = fits_ && component != noComponent && description_.componentCount < Description::maxComponents;
   if (!fits_)
      return;
   description_.components[description_.componentCount++] = component;
   if (fieldText(description_.typeString).size() != 0)
      append(description_.typeString, ",");
   append(description_.typeString, file_.typeString(component));
}

Component MsgDesc::finishType() const noexcept {
   return fits_ ? file_.typeIs(description_) : noComponent;
}

MessageId MsgDesc::finishMessage() const noexcept {
   return fits_ ? file_.messageIs(description_) : file_.undescribedMessage();
}

} // namespace Skein
