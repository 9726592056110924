#include "host/CommandModule.h"

#include "brindle/ModuleInspectData.h"

#include <gtest/gtest.h>

#include <string>

using Brindle::ModuleInspectData;
using Host::CommandModule;

namespace {

std::string failureOf(std::string const& fileName) {
   try {
      CommandModule const module(fileName);
   } catch (Host::ModuleError const& error) {
      return error.what();
   }
   return "none";
}

} // namespace

TEST(CommandModule, isThereAsLongAsTheObject) {
   for (int round = 0; round < 2; ++round) {
      {
         CommandModule const module;
         EXPECT_NE(ModuleInspectData::findType("Rsvp::Cli::ShowRsvpLerTunnel"), nullptr);
         CommandModule const again;
         EXPECT_NE(ModuleInspectData::findType("Rsvp::Cli::ShowRsvpLerTunnel"), nullptr);
      }
      EXPECT_EQ(ModuleInspectData::findModule("RsvpLerCliCapi"), nullptr);
   }
}

TEST(CommandModule, thatCannotBeLoaded) {
   EXPECT_EQ(failureOf("/nonexistent/lib.so"),
             "cannot load the show commands: /nonexistent/lib.so: cannot open shared object file: No such file or "
             "directory");
   ModuleInspectData other;
   other.name = "RsvpLerCliCapi";
   Brindle::ModuleRegistration const registration(other);
   EXPECT_EQ(failureOf(MODULE_FILE), std::string("cannot load the show commands: ") + MODULE_FILE +
                                           ": another module of the name RsvpLerCliCapi is already loaded");
   EXPECT_EQ(ModuleInspectData::findModule("RsvpLerCliCapi"), &other);
}
