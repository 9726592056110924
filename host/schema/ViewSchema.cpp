#include "host/schema/ViewSchema.h"

namespace Host {
namespace {

constexpr unsigned char tunnelText[] = {
#include "TunnelSchema.inc"
};

constexpr unsigned char statusText[] = {
#include "StatusSchema.inc"
};

} // namespace

std::string_view tunnelSchema() noexcept {
   return {reinterpret_cast<char const*>(tunnelText), sizeof tunnelText};
}

std::string_view statusSchema() noexcept {
   return {reinterpret_cast<char const*>(statusText), sizeof statusText};
}

} // namespace Host
