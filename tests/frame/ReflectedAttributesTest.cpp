#include "tests/frame/ReflectionFixture.h"

using namespace Brindle;
using namespace Rsvp;
using namespace Tests;

TEST_F(Reflection, tunnelHandlesAndTables) {
   auto const read = [&](int member) { return inspect(tunnelType, command, member, readCode); };
   RsvpLerStatehubStatus const& root = *router.status;
   RsvpLerFathomStatus const& fathomRoot = *router.fathomStatus;
   expectHandle(read(130), router.cliConfig);
   expectHandle(read(131), router.lerCliConfig);
   expectHandle(read(132), router.status);
   expectHandle(read(133), router.fathomStatus);
   expectHandle(read(134), root.pathSpecConfigColl.get());
   expectHandle(read(135), root.tunnelSpecColl.get());
   expectHandle(read(136), fathomRoot.superTunnelConfigColl.get());
   expectHandle(read(137), root.superTunnelStatusColl.get());
   expectHandle(read(138), root.subTunnelConfigCollTable.get());
   expectHandle(read(139), root.subTunnelStatusCollTable.get());
   expectHandle(read(140), root.mbbTunnelConfigCollTable.get());
   expectHandle(read(141), root.mbbTunnelStatusCollTable.get());
   expectHandle(read(142), root.tunnelIndexMap.get());
   expectHandle(read(143), root.subTunnelIndexMap.get());
   expectHandle(read(144), root.lspGroupStatusCollTable.get());
   expectHandle(read(145), root.lspRequestConfigCollTable.get());
   expectHandle(read(146), root.lspRequestStatusCollTable.get());
   expectHandle(read(147), root.bwSamplingStatusColl.get());
   expectHandle(read(148), root.autoBwStats.get());
   expectHandle(read(149), fathomRoot.autoBwConfig.get());
   expectHandle(read(150), fathomRoot.rsvpLerTunnelHistory.get());
   expectHandle(read(151), fathomRoot.rsvpLerSubTunnelHistory.get());
   expectHandle(read(152), root.cspfPathKeyMapping.get());
}

TEST_F(Reflection, statusHandlesAndTables) {
   auto const read = [&](int member) { return inspect(statusType, status, member, readCode); };
   expectHandle(read(130), router.lerConfig);
   expectHandle(read(131), router.lerCliConfig);
   expectHandle(read(132), router.status);
   expectHandle(read(133), router.fathomStatus);
   expectHandle(read(134), router.featureConfigDir);
   expectHandle(read(135), router.fathomStatus->superTunnelConfigColl.get());
   expectHandle(read(136), router.status->superTunnelStatusColl.get());
   expectHandle(read(137), router.status->subTunnelConfigCollTable.get());
   expectHandle(read(138), router.status->subTunnelStatusCollTable.get());
   expectHandle(read(139), router.status->mbbTunnelStatusCollTable.get());
   expectHandle(read(140), router.status->lspGroupStatusCollTable.get());
   expectHandle(read(141), router.status->lspRequestStatusCollTable.get());
}

TEST_F(Reflection, aHandleThatIsReadIsCounted) {
   EXPECT_EQ(router.cliConfig->userCount(), 2u);
   {
      Outcome const outcome = inspect(tunnelType, command, 130, readCode);
      EXPECT_EQ(router.cliConfig->userCount(), 3u);
   }
   EXPECT_EQ(router.cliConfig->userCount(), 2u);
}

TEST_F(Reflection, widths) {
   struct Row {
      int member;
      GenericValue value;
      std::uint8_t write;
   };
   auto const u8 = [](int number) { return GenericValue(static_cast<std::uint8_t>(number)); };
   auto const u64 = [](int number) { return GenericValue(static_cast<std::uint64_t>(number)); };
   Row const rows[] = {
         {153, u8(11), success}, {154, u8(40), refused},  {155, u8(11), success}, {156, u8(5), success},
         {157, u8(5), success},  {158, u64(11), refused}, {159, u8(11), success}, {160, false, success},
         {161, u8(10), success}, {162, u64(4), refused},  {163, u8(5), success},  {164, u8(11), success},
         {165, u8(7), success},  {166, u8(5), success},   {167, u8(11), success}, {168, false, success},
         {169, u64(4), refused}, {170, u8(5), success},   {171, u8(6), success},  {172, u8(10), success},
         {173, u8(10), success},
   };
   for (Row const& row : rows) {
      SCOPED_TRACE(row.member);
      bool const isBool = row.value.holds<bool>();
      bool const isU64 = row.value.holds<std::uint64_t>();
      GenericValue const other = isBool ? GenericValue(true) : isU64 ? u64(77) : u8(77);
      auto const expectReads = [&](GenericValue const& value) {
         Outcome const outcome = inspect(tunnelType, command, row.member, readCode);
         if (isBool)
            expectValue(outcome, value.get<bool>());
         else if (isU64)
            expectValue(outcome, value.get<std::uint64_t>());
         else
            expectValue(outcome, value.get<std::uint8_t>());
      };
      expectReads(row.value);
      expectStatus(inspect(tunnelType, command, row.member, writeCode, {std::uint32_t{77}}), refused);
      expectStatus(inspect(tunnelType, command, row.member, writeCode), refused);
      expectStatus(inspect(tunnelType, command, row.member, writeCode, {other, other}), refused);
      expectStatus(inspect(tunnelType, command, row.member, readCode, {other}), refused);
      expectReads(row.value);
      Outcome const written = inspect(tunnelType, command, row.member, writeCode, {other});
      expectStatus(written, row.write);
      EXPECT_EQ(written.result.empty(), row.write == success);
      expectReads(row.write == success ? other : row.value);
   }
   EXPECT_EQ(command->tunnelNameWidth, 77);
   EXPECT_EQ(command->sessionIdWidth, 77);
   EXPECT_TRUE(command->p2mpBw1000);
   EXPECT_EQ(command->tunnelNameMaxWidth, 40);
}

TEST_F(Reflection, aWrittenWidthIsWhereTheNextSummaryStarts) {
   expectStatus(inspect(tunnelType, command, 153, writeCode, {std::uint8_t{14}}), success);
   std::string const answer = tunnelAnswer(*command, textFormat, {.summary = true});
   EXPECT_EQ(answer.substr(0, answer.find("\n\n")),
             "P2P\n"
             "Tunnel Name    Destination Color Index Active Path Reserved BW LSPs State\n"
             "-------------- ----------- ----- ----- ----------- ----------- ---- -----");
}
