#pragma once

#include "skein/TraceFile.h"

#include <string_view>

namespace Skein {

// A description in the making, of a type or of a message of one file. What doesn't fit, or has a component that the
// file has no room for, is left undescribed, and so are its records.
class MsgDesc {
public:
   // Of a type.
   MsgDesc(TraceFile& file, std::string_view typeName) noexcept;
   // Of a message: the function, and where it stands.
   MsgDesc(TraceFile& file, std::string_view sourcePath, std::uint32_t line, std::string_view function) noexcept;

   // Adds to the format.
   void addText(std::string_view text) noexcept;
   // Adds the component to the type string. Its place is one that addText adds.
   void addComponent(Component component) noexcept;

   // Enters it into the file.
   Component finishType() const noexcept;
   MessageId finishMessage() const noexcept;

private:
   template<std::size_t size>
   void append(std::array<char, size>& field, std::string_view text) noexcept;

   TraceFile& file_;
   Description description_;
   bool fits_ = true;
};

} // namespace Skein
