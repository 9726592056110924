#pragma once

#include "brindle/GenericValue.h"
#include "brindle/String.h"
#include "vane/CharRange.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// The entries of a module's tables: what a module tells of its types, so that callers who know a type only by its name
// can make objects of it, read and write their attributes and call their operations.

namespace Brindle {

struct ModuleInspectData;

enum class TypeKind : std::uint8_t { enumeration, value, objectClass };

enum class MemberKind : std::uint8_t {
   enumerator,
   storedAttribute,   // a field of the object
   computedAttribute, // what the object works out when it is asked, and constants
   operation
};

// How a type is used in a member. All from `enumeration` on refer to a type of a module.
enum class TypeForm : std::uint8_t {
   none, // an operation without a result
   boolean,
   u8,
   u16,
   u32,
   u64,
   string,
   enumeration,
   value,
   handle, // counted, on an object that can be changed through it
   handleToConst
};

struct TypeUse {
   TypeForm form = TypeForm::none;
   // Where the form refers to a type: whether `index` is the number of a type of the module itself or a place in its
   // table of type references.
   bool ofThisModule = false;
   std::uint16_t index = 0;

   friend bool operator==(TypeUse const&, TypeUse const&) noexcept = default;
};

struct ArgumentData {
   std::string_view name;
   TypeUse type;
};

struct OperationSignature {
   static constexpr std::size_t maxArguments = 8;

   std::span<ArgumentData const> arguments() const noexcept { return std::span(list).first(count); }

   std::size_t count = 0;
   std::array<ArgumentData, maxArguments> list{};
};

// Names a member of a type by its number alone.
struct MemberDescriptor {
   std::uint16_t number = 0;
};

struct MemberData : MemberDescriptor {
   MemberKind kind = MemberKind::storedAttribute;
   std::uint16_t name = 0;      // place in the table of member names
   TypeUse result;              // of an enumerator the enumeration itself
   std::uint16_t signature = 0; // of an operation: place in the table of operation signatures
};

// A type of another module, by the place of the module among the dependencies and the number of the type there.
struct TypeReference {
   std::uint16_t module = 0;
   std::uint16_t index = 0;

   friend bool operator==(TypeReference const&, TypeReference const&) noexcept = default;
};

enum class InspectStatus : std::uint8_t { success = 0, refused = 1, unknownMember = 2 };

enum class InspectOpcode : std::uint8_t { read = 0, write = 1, call = 10, boolean = 11, equal = 12 };

// How a module constructs objects of a type and operates on them. A refused request changes neither object nor result.
// A type that lacks an entry point has nullptr there.
struct FunctionTable {
   // Makes an object from the arguments of its constructor; a wrong count or type is refused.
   InspectStatus (*genericIfConstructFromCtorArgs)(GenericValue& result, Arguments arguments) = nullptr;

   // Makes a default value, or a copy of `original` when that isn't nullptr; a value of another type is refused.
   InspectStatus (*inspectConstruct)(GenericValue& result, GenericValue const* original) = nullptr;

   // Reads (no argument), writes (one) or calls (as declared) a member of an object; what can't be done with the
   // member, an object of another type and a wrong count or type of arguments are refused. Without a member the whole
   // object is asked: `boolean` takes no argument and `equal` the other value. A value is given as such, an object of a
   // class as a handle. Throws what the called operation throws. The result of an operation without one holds nothing.
   InspectStatus (*inspectOperation)(GenericValue& result, GenericValue& object, MemberDescriptor const* member,
                                     InspectOpcode opcode, Arguments arguments) = nullptr;

   // The text form of a value and back. Reading takes the whole text. Both throw Exception for a value of another type,
   // and reading for a text that isn't a text form.
   String (*inspectEncodeToString)(GenericValue const& value) = nullptr;
   void (*inspectDecodeFromString)(GenericValue& result, Vane::CharRange text) = nullptr;

   // Throws Exception for a value of another type and for a type without a hash.
   std::uint32_t (*inspectGetHash)(GenericValue const& value) = nullptr;

   // Whether both are of the type and equal.
   bool (*isEq)(GenericValue const& a, GenericValue const& b) = nullptr;
};

// The entry of a type. The views it gives are valid until its module is unloaded.
struct TypeData {
   std::string_view name() const noexcept;
   FunctionTable const& functions() const noexcept;
   std::span<MemberData const> members() const noexcept;
   // nullptr when the type has no member of that name.
   MemberData const* findMember(std::string_view memberName) const noexcept;
   // For members of this type.
   std::string_view memberName(MemberData const& member) const noexcept;
   // Of an operation of this type.
   OperationSignature const& signature(MemberData const& operation) const noexcept;

   std::uint16_t number = 0; // place in the tables of the module
   TypeKind kind = TypeKind::value;
   std::uint16_t firstMember = 0; // place in the table of members
   std::uint16_t memberCount = 0;
   ModuleInspectData const* module = nullptr;
};

} // namespace Brindle
