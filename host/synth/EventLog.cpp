#include "host/synth/EventLog.h"

#include <algorithm>

namespace Host::Synth {

EventLog::EventLog(Rows& rows, std::uint32_t index, std::uint32_t firstSlot, std::uint32_t capacity, Milliseconds start)
      : sink_(rows.next()), firstSlot_(firstSlot), capacity_(capacity), time_(start.count) {
   sink_.put("{\"tunnelIndex\":", index, ",\"entries\":[");
}

EventLog::~EventLog() {
   std::uint32_t const last = count_ == 0 ? 0 : (firstSlot_ + count_ - 1) % capacity_;
   sink_.put("],\"lastEntryIndex\":", last, "}");
}

void EventLog::wait(std::uint64_t milliseconds) noexcept {
   time_ = std::min(time_ + milliseconds, utcMilliseconds - 1);
}

void EventLog::startEvent() {
   sink_.put(count_ == 0 ? std::string_view("") : ",", "{\"entryIndex\":", (firstSlot_ + count_) % capacity_,
             ",\"timestamp\":", Milliseconds{time_}, ",\"event\":{");
   count_++;
}

} // namespace Host::Synth
