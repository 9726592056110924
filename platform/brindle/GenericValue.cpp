#include "brindle/GenericValue.h"

namespace Brindle {

GenericValue::GenericValue() noexcept = default;
GenericValue::GenericValue(GenericValue const& other) = default;
GenericValue::GenericValue(GenericValue&& other) noexcept = default;
GenericValue& GenericValue::operator=(GenericValue const& other) = default;
GenericValue& GenericValue::operator=(GenericValue&& other) noexcept = default;
GenericValue::~GenericValue() = default;

} // namespace Brindle
