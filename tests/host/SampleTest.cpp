#include "host/sample/Sample.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

TEST(Sample, IsTheFileToTheByte) {
   std::ifstream file(SAMPLE_FILE, std::ios::binary);
   ASSERT_TRUE(file.is_open());
   std::string const bytes{std::istreambuf_iterator<char>(file), {}};
   ASSERT_FALSE(bytes.empty());
   EXPECT_TRUE(Host::sampleState() == bytes);
}

} // namespace
