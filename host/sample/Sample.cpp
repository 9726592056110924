#include "host/sample/Sample.h"

namespace Host {
namespace {

constexpr unsigned char sampleText[] = {
#include "SampleText.inc"
};

} // namespace

std::string_view sampleState() noexcept {
   return {reinterpret_cast<char const*>(sampleText), sizeof sampleText};
}

} // namespace Host
