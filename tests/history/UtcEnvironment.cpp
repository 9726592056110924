#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace {

// Calendar texts are those of the process's time zone: the tests of this program expect UTC.
class UtcEnvironment : public testing::Environment {
public:
   void SetUp() override {
      setenv("TZ", "UTC", 1);
      tzset();
   }
};

[[maybe_unused]] testing::Environment* const utc = testing::AddGlobalTestEnvironment(new UtcEnvironment);

} // namespace
