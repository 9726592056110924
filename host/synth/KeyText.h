#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Host::Synth {

// A key of the state file as JSON, but for the brace that closes it, so that a longer key is made from a shorter one:
// {"name":"pe12-pe340-7","source":"cli","subTunnelId":0,"epoch":1
class KeyText {
public:
   // At most 160 characters in all; what goes beyond is cut.
   KeyText& append(std::string_view text) noexcept;
   KeyText& append(std::uint64_t number) noexcept;

   KeyText subTunnel(std::uint32_t id) const noexcept { return with(",\"subTunnelId\":", id); }
   KeyText instance(std::uint32_t epoch) const noexcept { return with(",\"epoch\":", epoch); }
   KeyText group(std::uint32_t id) const noexcept { return with(",\"groupId\":", id); }
   KeyText request(std::uint32_t id) const noexcept { return with(",\"configId\":", id); }

   // Without the closing brace. Valid while the key lives.
   std::string_view text() const noexcept { return {text_.data(), size_}; }

private:
   KeyText with(std::string_view member, std::uint32_t number) const noexcept {
      return KeyText(*this).append(member).append(number);
   }

   std::size_t size_ = 0;
   std::array<char, 160> text_;
};

} // namespace Host::Synth
