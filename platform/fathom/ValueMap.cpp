#include "fathom/ValueMap.h"

#include <mutex>

namespace Fathom {

namespace {

// Guards the reports of all maps. Damage is rare, and a mutex in each of a hundred thousand maps is not worth
// it.
std::mutex& reportMutex() {
   static std::mutex& instance = *new std::mutex;
   return instance;
}

} // namespace

struct FathomValueMapBase::Reports {
   CorruptionHandler handler;
   Brindle::String message;
   std::uint64_t count = 0;
};

FathomValueMapBase::FathomValueMapBase() noexcept = default;
FathomValueMapBase::~FathomValueMapBase() = default;

void FathomValueMapBase::handleCorruptionDetected(Brindle::String const& message,
                                                  FathomValueMapBase const& manager) const {
   CorruptionHandler handler;
   {
      std::lock_guard const lock(reportMutex());
      ++reports().count;
      reports().message = message;
      handler = reports().handler;
   }
   if (handler)
      handler(message, manager);
}

void FathomValueMapBase::setCorruptionHandler(CorruptionHandler handler) {
   std::lock_guard const lock(reportMutex());
   std::swap(reports().handler, handler);
}

std::uint64_t FathomValueMapBase::corruptionCount() const {
   std::lock_guard const lock(reportMutex());
   return reports_ ? reports_->count : 0;
}

Brindle::String FathomValueMapBase::lastCorruption() const {
   std::lock_guard const lock(reportMutex());
   return reports_ ? reports_->message : Brindle::String();
}

FathomValueMapBase::Reports& FathomValueMapBase::reports() const {
   if (!reports_)
      reports_ = std::make_unique<Reports>();
   return *reports_;
}

} // namespace Fathom
