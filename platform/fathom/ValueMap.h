#pragma once

#include "brindle/Exception.h"
#include "brindle/String.h"
#include "fathom/String.h"
#include "vane/Epoch.h"
#include "vane/HashMap2018.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace VaneFathom {

// What a slot of a value map holds: the value, or the account of the damage that an integrity check has found
// in it.
template<class Value>
struct VaneFathomValueMapValueWrapper {
   Value value{};
   Fathom::String damage{};
   bool damaged = false;
};

} // namespace VaneFathom

namespace Fathom {

struct FathomValueBase {
   // The value of a slot that holds nothing: one object for the whole process, made on first use.
   template<class Value>
   static Value const& defaultValue() {
      static Value const value{};
      return value;
   }
};

// What the value maps have in common: where a damaged slot is reported.
class FathomValueMapBase {
public:
   // Told the message and the map that the damage is in. It runs on the thread of the reader, under no lock;
   // it may be called by several threads at once.
   using CorruptionHandler = std::function<void(Brindle::String const& message, FathomValueMapBase const& manager)>;

   FathomValueMapBase() noexcept;
   FathomValueMapBase(FathomValueMapBase const&) = delete;
   FathomValueMapBase& operator=(FathomValueMapBase const&) = delete;
   virtual ~FathomValueMapBase();

   // Called once for each read of a damaged slot, with the map that is the manager of the slot. Unless a
   // class overrides it, counts the report, keeps its message and calls the handler that was set. What a
   // handler throws passes.
   virtual void handleCorruptionDetected(Brindle::String const& message, FathomValueMapBase const& manager) const;

   // The map keeps its own copy of the handler, whose captures have to live as long; an empty one only ends
   // the former.
   void setCorruptionHandler(CorruptionHandler handler);
   // The number of reports that this map has counted.
   std::uint64_t corruptionCount() const;
   // The message of the latest report; empty before the first.
   Brindle::String lastCorruption() const;

private:
   struct Reports;
   Reports& reports() const;

   mutable std::unique_ptr<Reports> reports_; // made when it is first needed
};

// A map of the shared state from keys to plain values, for one writer and any number of readers at once.
// Readers never wait, but for each other where one reports a damaged slot, and get the value copied out. A slot that
// holds nothing reads as the default value.
template<class Key, class Value>
class FathomValueMap : public FathomValueMapBase {
   using Wrapper = VaneFathom::VaneFathomValueMapValueWrapper<Value>;

public:
   // Readers.

   // Throws Brindle::CorruptionDetectedException, with the message of the damage, for a damaged slot.
   Value operator[](Key const& key) const {
      Vane::Pin const pin;
      Wrapper const* const slot = slots_.peek(key);
      if (slot == nullptr)
         return FathomValueBase::defaultValue<Value>();
      if (slot->damaged)
         throw Brindle::CorruptionDetectedException(Brindle::String(slot->damage.view()));
      return slot->value;
   }
   // As above, but a damaged slot is reported once and reads as the default value. Any other exception
   // passes.
   Value safeLookup(Key const& key) const {
      try {
         return (*this)[key];
      } catch (Brindle::CorruptionDetectedException const& damage) {
         handleCorruptionDetected(damage.what(), *this);
         return FathomValueBase::defaultValue<Value>();
      }
   }
   // Whether the slot holds something, damaged or not.
   bool contains(Key const& key) const noexcept { return slots_.contains(key); }
   // The number of slots that hold something, damaged ones included.
   std::size_t size() const noexcept { return slots_.size(); }

   // The writer.

   // Writes a slot, which mends it if it was damaged. Returns whether it held nothing.
   bool set(Key key, Value value) { return slots_.set(std::move(key), Wrapper{std::move(value), {}, false}); }
   // Returns whether the slot held something.
   bool erase(Key const& key) { return slots_.erase(key); }
   void clear() noexcept { slots_.clear(); }
   // Does what a failed integrity check does: from now on the slot, which may have held nothing, reads as
   // damaged.
   void markDamaged(Key key, Fathom::String message) {
      slots_.set(std::move(key), Wrapper{Value{}, std::move(message), true});
   }

private:
   Vane::HashMap2018<Key, Wrapper> slots_;
};

} // namespace Fathom
