#include "host/server/ListeningSocket.h"

#include "tests/host/server/LiveServer.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

namespace Host::Test {

namespace {

class ListeningSocketTest : public testing::Test {
protected:
   ListeningSocketTest() {
      char name[] = "/tmp/lershow-test-XXXXXX";
      directory_ = mkdtemp(name);
   }
   ~ListeningSocketTest() override { std::filesystem::remove_all(directory_); }

   std::string path() const { return directory_ + "/socket"; }
   // Leaves the file of a socket that nobody listens on.
   void leaveStale() {
      ListeningSocket const gone(directory_ + "/other", 0600);
      std::filesystem::create_hard_link(directory_ + "/other", path());
   }
   std::string failure() const {
      try {
         ListeningSocket const socket(path(), 0600);
      } catch (ServerError const& error) {
         return error.what();
      }
      return "";
   }

   std::string directory_;
};

TEST_F(ListeningSocketTest, HasItsPermissionsWhateverTheMask) {
   for (mode_t const mask : {0, 022, 077, 0777}) {
      mode_t const before = umask(mask);
      for (mode_t const mode : {0600, 0660, 0666, 0777}) {
         ListeningSocket const socket(path(), mode);
         struct stat status {};
         ASSERT_EQ(stat(path().c_str(), &status), 0);
         EXPECT_EQ(status.st_mode, S_IFSOCK | mode);
         EXPECT_EQ(status.st_uid, getuid());
      }
      EXPECT_EQ(umask(before), mask);
   }
}

TEST_F(ListeningSocketTest, RemovesItsFile) {
   { ListeningSocket const socket(path(), 0600); }
   EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(ListeningSocketTest, LeavesTheFileOfAnotherAlone) {
   {
      ListeningSocket const socket(path(), 0600);
      std::filesystem::rename(path(), directory_ + "/mine");
      std::ofstream(path()) << "something else";
   }
   EXPECT_TRUE(std::filesystem::exists(path()));
}

TEST_F(ListeningSocketTest, ReplacesAStaleFile) {
   leaveStale();
   ASSERT_TRUE(std::filesystem::is_socket(path()));
   ListeningSocket const socket(path(), 0600);
   EXPECT_TRUE(connectTo(path()));
}

TEST_F(ListeningSocketTest, RefusesALiveOne) {
   ListeningSocket const live(path(), 0600);
   EXPECT_EQ(failure(), "cannot serve at " + path() + ": another server answers there");
   EXPECT_TRUE(connectTo(path()));
}

TEST_F(ListeningSocketTest, RefusesAFileThatIsNoSocket) {
   std::ofstream(path()) << "precious";
   EXPECT_EQ(failure(), "cannot serve at " + path() + ": there is a file of this name that is no socket");
   EXPECT_EQ(std::filesystem::file_size(path()), 8u);
}

TEST_F(ListeningSocketTest, SaysWhyNot) {
   directory_ += "/none";
   EXPECT_EQ(failure(), "cannot serve at " + path() + ": No such file or directory");
   directory_ = std::filesystem::path(directory_).parent_path();
   EXPECT_THROW(ListeningSocket("", 0600), ServerError);
   EXPECT_THROW(ListeningSocket(std::string(108, 'x'), 0600), ServerError);
   EXPECT_THROW(connectTo(path()), ServerError);
}

} // namespace

} // namespace Host::Test
