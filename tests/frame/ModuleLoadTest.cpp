#include "RsvpLer/state/FeatureConfig.h"
#include "RsvpLer/state/Roots.h"
#include "RsvpLer/state/TunnelRecords.h"
#include "RsvpLer/state/TunnelTables.h"
#include "brindle/Inspect.h"
#include "brindle/ModuleInspectData.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

// The built library as a caller meets it who has only its file: this program isn't linked with it.

using namespace Brindle;
using namespace Rsvp;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

namespace {

constexpr char const* recordName = "_RsvpLerCliCapi_35b5d92e19a7383a_vaneModule";

void* load(char const* file) {
   void* const module = dlopen(file, RTLD_NOW | RTLD_LOCAL);
   EXPECT_NE(module, nullptr) << dlerror();
   return module;
}

// A root with one tunnel of that name.
Ptr<RsvpLerFathomStatus> rootWithTunnel(char const* name) {
   auto config = makeNode<RsvpLerSuperTunnelConfig>();
   config->tunnelSpecId = {Fathom::String(name), RsvpLerTunnelSource::cli};
   auto coll = makeNode<RsvpLerSuperTunnelConfigColl>();
   coll->set(config->tunnelSpecId, config);
   auto root = makeNode<RsvpLerFathomStatus>();
   root->superTunnelConfigColl.set(std::move(coll));
   return root;
}

// What the pipe holds once its writing end is closed.
std::string drain(int (&ends)[2]) {
   close(ends[1]);
   std::string text;
   char chunk[4096];
   for (ssize_t count = 0; (count = read(ends[0], chunk, sizeof chunk)) > 0;)
      text.append(chunk, static_cast<std::size_t>(count));
   close(ends[0]);
   return text;
}

std::string summaryOfOneTunnel() {
   TypeData const& commandType = typeNamed("Rsvp::Cli::ShowRsvpLerTunnel");
   GenericValue command = construct(commandType, {Ptr<RsvpCliConfig const>(), Ptr<RsvpLerCliConfig const>(),
                                                  makeNode<RsvpLerStatehubStatus>(), rootWithTunnel("den-nyc")});
   write(commandType, command, "tunnelNameWidth", std::uint8_t{13});
   EXPECT_EQ(Brindle::read(commandType, command, "tunnelNameWidth").get<std::uint8_t>(), 13);

   TypeData const& filterType = typeNamed("Rsvp::Cli::ShowRsvpLerTunnelFilter");
   GenericValue filter = construct(filterType, {});
   write(filterType, filter, "tunnelName", String("no such tunnel"));

   int ends[2];
   EXPECT_EQ(pipe(ends), 0);
   call(commandType, command, "render",
        {static_cast<std::uint32_t>(ends[1]), std::uint32_t{1}, filter, true, false, false, false, false});
   return drain(ends);
}

template<class Table>
Ptr<Table> empty() {
   return makeNode<Table>();
}

// The eight tables that every view of a tunnel needs are there.
std::string jsonOfOneTunnel() {
   auto status = makeNode<RsvpLerStatehubStatus>();
   status->superTunnelStatusColl.set(empty<RsvpLerSuperTunnelStatusColl>());
   status->subTunnelStatusCollTable.set(empty<RsvpLerSubTunnelStatusCollTable>());
   status->tunnelSpecColl.set(empty<RsvpLerTunnelSpecPtrConstColl>());
   status->bwSamplingStatusColl.set(empty<RsvpLerBwSamplingStatusColl>());
   status->tunnelIndexMap.set(empty<RsvpLerTunnelIndexMap>());
   status->autoBwStats.set(empty<RsvpLerAutoBwStats>());
   auto root = rootWithTunnel("den-nyc");
   root->autoBwConfig.set(empty<RsvpLerAutoBwConfig>());

   TypeData const& commandType = typeNamed("Rsvp::Cli::ShowRsvpLerTunnel");
   GenericValue command =
         construct(commandType, {Ptr<RsvpCliConfig const>(), Ptr<RsvpLerCliConfig const>(),
                                 Ptr<RsvpLerStatehubStatus const>(status), Ptr<RsvpLerFathomStatus const>(root)});
   GenericValue filter = construct(typeNamed("Rsvp::Cli::ShowRsvpLerTunnelFilter"), {});
   int ends[2];
   EXPECT_EQ(pipe(ends), 0);
   call(commandType, command, "render",
        {static_cast<std::uint32_t>(ends[1]), std::uint32_t{2}, filter, false, true, false, false, false});
   return drain(ends);
}

} // namespace

TEST(ModuleLoad, isUsedAndUnloadedAndLoadedAgain) {
   for (int round = 0; round < 3; ++round) {
      EXPECT_EQ(ModuleInspectData::findType("Rsvp::Cli::ShowRsvpLerTunnel"), nullptr);
      void* const module = load(MODULE_FILE);
      ASSERT_NE(module, nullptr);
      EXPECT_EQ(ModuleInspectData::findModule("RsvpLerCliCapi"), dlsym(module, recordName));
      EXPECT_NE(ModuleInspectData::findType("Rsvp::Cli::ShowTunnelVariant"), nullptr);
      EXPECT_NE(ModuleInspectData::findType("Rsvp::Cli::ShowRsvpLer"), nullptr);
      EXPECT_EQ(summaryOfOneTunnel(), "P2P\n"
                                      "Tunnel Name   Destination Color Index Active Path Reserved BW LSPs State\n"
                                      "------------- ----------- ----- ----- ----------- ----------- ---- -----\n"
                                      "\n"
                                      "P2MP\n"
                                      "Tunnel Name P2MP ID Index Reserved BW LSPs State Leaves\n"
                                      "----------- ------- ----- ----------- ---- ----- ------\n");
      EXPECT_THAT(jsonOfOneTunnel(), AllOf(StartsWith("{\"tunnels\":{\"den-nyc\":{\"source\":\"::\","),
                                           EndsWith("\"secondaryPaths\":[],\"lsps\":[],\"subTunnels\":{}}}}\n")));
      EXPECT_EQ(dlclose(module), 0);
      EXPECT_EQ(ModuleInspectData::findModule("RsvpLerCliCapi"), nullptr);
      EXPECT_EQ(dlopen(MODULE_FILE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the library stays in the process";
   }
   EXPECT_THAT(ModuleInspectData::takeLoadErrors(), ElementsAre());
}

TEST(ModuleLoad, isTurnedAwayWhenItsNameIsTaken) {
   ModuleInspectData other;
   other.name = "RsvpLerCliCapi";
   ModuleRegistration const registration(other);
   void* const module = load(MODULE_FILE);
   ASSERT_NE(module, nullptr);
   EXPECT_EQ(ModuleInspectData::findType("Rsvp::Cli::ShowRsvpLer"), nullptr);
   EXPECT_THAT(ModuleInspectData::takeLoadErrors(),
               ElementsAre("another module of the name RsvpLerCliCapi is already loaded"));
   dlclose(module);
   EXPECT_EQ(ModuleInspectData::findModule("RsvpLerCliCapi"), &other);
}
