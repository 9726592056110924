#include "brindle/Exception.h"
#include "brindle/Inspect.h"
#include "tests/frame/ReflectionFixture.h"

#include <set>

using namespace Brindle;
using namespace Rsvp;
using namespace Tests;
using Cli::ShowRsvpLerTunnelFilter;
using Cli::ShowTunnelVariant;

TEST_F(Reflection, lookups) {
   auto const calls = operations();
   auto const call = [&](int member) { return inspect(tunnelType, command, member, callCode, calls.at(member)); };
   expectHandle(call(174), command->getMbbTunnelConfig(mbbId("t")));
   expectHandle(call(175), command->getMbbTunnelStatus(mbbId("t")));
   expectHandle(call(176), command->getLspGroupStatus(groupId("t")));
   expectHandle(call(177), command->getLspGroupStatus(groupId("t")));
   expectHandle(call(178), command->getLspRequestConfig(requestId("t")));
   expectHandle(call(179), command->getLspRequestStatus(requestId("t")));
   EXPECT_TRUE(command->getLspRequestStatus(requestId("t")));
   expectHandle(inspect(tunnelType, command, 174, callCode, {mbbId("u")}), Handle<RsvpLerMbbTunnelConfig>());
   expectHandle(inspect(statusType, status, 142, callCode, {requestId("t")}),
                command->getLspRequestStatus(requestId("t")));
   expectValue(call(180), std::uint64_t{1000});
   expectValue(call(250), ShowTunnelVariant::showTunnelDetailP2p);
}

TEST_F(Reflection, theOrderOfArgumentsIsTheDeclaredOne) {
   router.lspGroupStatus(groupId("t", 1, 2), [](auto&) {});
   router.mbbTunnelStatus(mbbId("t", 2), {});
   auto const call = [&](Values const& arguments) { return inspect(tunnelType, command, 177, callCode, arguments); };
   expectHandle(call({mbbId("u"), mbbId("t", 2), std::uint8_t{1}}), command->getLspGroupStatus(groupId("t", 1, 2)));
   EXPECT_TRUE(command->getLspGroupStatus(groupId("t", 1, 2)));
   expectValue(inspect(tunnelType, command, 250, callCode, {RsvpSessionType::p2mp, true, false, false, false, false}),
               ShowTunnelVariant::showTunnelSummaryP2mp);
   expectValue(inspect(tunnelType, command, 250, callCode, {RsvpSessionType::p2p, false, true, false, false, false}),
               ShowTunnelVariant::showTunnelLspP2p);
   expectValue(inspect(tunnelType, command, 250, callCode, {RsvpSessionType::p2p, false, false, false, true, false}),
               ShowTunnelVariant::showTunnelHistoryP2p);
   expectValue(inspect(tunnelType, command, 250, callCode, {RsvpSessionType::p2p, true, false, false, false, true}),
               ShowTunnelVariant::showTunnelSubTunnelSummaryP2p);
}

TEST_F(Reflection, operationsWithoutResult) {
   for (int const member : {184, 185}) {
      Values const arguments = operations().at(member);
      Outcome const outcome = inspect(tunnelType, command, member, callCode, arguments);
      expectStatus(outcome, success);
      EXPECT_TRUE(outcome.result.empty());
      EXPECT_EQ(arguments[1].get<Ptr<RsvpErrorWithNodeOrderedSet>>()->size(), 1u);
      // The set is changed, so a handle that only reads won't do.
      Handle<RsvpErrorWithNodeOrderedSet> const readOnly = arguments[1].get<Ptr<RsvpErrorWithNodeOrderedSet>>();
      expectStatus(inspect(tunnelType, command, member, callCode, {arguments[0], readOnly}), refused);
   }
   router.superTunnelConfig(tunnelId("a-tunnel-with-a-name-of-32-bytes"));
   router.subTunnelIndex(subTunnelId("t"), 1234567);
   Values const longName = {tunnelId("a-tunnel-with-a-name-of-32-bytes")};
   expectStatus(inspect(tunnelType, command, 211, callCode, longName), success);
   EXPECT_EQ(command->tunnelNameWidth, 32);
   EXPECT_EQ(command->p2mpTunnelNameWidth, 11);
   expectStatus(inspect(tunnelType, command, 217, callCode, longName), success);
   EXPECT_EQ(command->p2mpTunnelNameWidth, 32);
   expectStatus(inspect(tunnelType, command, 214, callCode, operations().at(214)), success);
}

TEST_F(Reflection, renderWritesTheAnswerOfADirectCall) {
   router.superTunnelConfig(tunnelId("t"));
   router.superTunnelConfig(tunnelId("u"));
   for (std::uint32_t const format : {textFormat, jsonFormat}) {
      EXPECT_EQ(answerOf([&](std::uint32_t socket) {
                   expectStatus(
                         inspect(tunnelType, command, 252, callCode,
                                 {socket, format, ShowRsvpLerTunnelFilter{"u"}, false, false, true, false, false}),
                         success);
                }),
                tunnelAnswer(*router.tunnelCommand(), format, {.detail = true}, "u"));
      EXPECT_EQ(answerOf([&](std::uint32_t socket) {
                   expectStatus(inspect(statusType, status, 143, callCode, {socket, format}), success);
                }),
                answerOf([&](std::uint32_t socket) { router.statusCommand()->render(socket, format); }));
   }
}

TEST_F(Reflection, everyMemberAndOperationCode) {
   auto const tunnelCalls = operations();
   struct Row {
      TypeData const& type;
      GenericValue object;
      int firstOperation;
      std::map<int, Values> calls;
   };
   Row const rows[] = {
         {tunnelType, command, 174, operations()},
         {statusType, status, 142, {{142, {requestId("t")}}, {143, {std::uint32_t{1}, std::uint32_t{0}}}}},
   };
   for (Row const& row : rows) {
      for (MemberData const& member : row.type.members()) {
         bool const isOperation = member.number >= row.firstOperation;
         Values const arguments = isOperation ? row.calls.at(member.number) : Values{};
         for (unsigned code = 0; code < 256; ++code) {
            SCOPED_TRACE(testing::Message() << row.type.name() << ' ' << member.number << " code " << code);
            bool const allowed = code == (isOperation ? callCode : readCode);
            expectStatus(inspect(row.type, row.object, member.number, static_cast<std::uint8_t>(code), arguments),
                         allowed ? success : refused);
         }
         if (!isOperation)
            expectStatus(inspect(row.type, row.object, member.number, writeCode, {Handle<RsvpCliConfig>()}), refused);
      }
   }
}

TEST_F(Reflection, argumentsOfAnotherCountOrType) {
   for (auto const& [member, arguments] : operations()) {
      SCOPED_TRACE(member);
      Values shorter = arguments;
      shorter.pop_back();
      Values longer = arguments;
      longer.emplace_back(true);
      expectStatus(inspect(tunnelType, command, member, callCode, shorter), refused);
      expectStatus(inspect(tunnelType, command, member, callCode, longer), refused);
      GenericValue const others[] = {GenericValue(),          String("text"),         std::uint16_t{1},
                                     Handle<RsvpLerConfig>(), RsvpLerTunnelState::up, pathSpecId("t")};
      for (std::size_t place = 0; place < arguments.size(); ++place) {
         for (GenericValue const& other : others) {
            Values wrong = arguments;
            wrong[place] = other;
            expectStatus(inspect(tunnelType, command, member, callCode, wrong), refused);
         }
      }
   }
}

TEST_F(Reflection, membersThatAreNone) {
   for (TypeData const* const type : {&tunnelType, &statusType}) {
      GenericValue const object = type == &tunnelType ? GenericValue(command) : GenericValue(status);
      std::set<int> published;
      for (MemberData const& member : type->members())
         published.insert(member.number);
      for (int number = 0; number < 300; ++number) {
         for (std::uint8_t const code : {readCode, writeCode, callCode}) {
            if (!published.contains(number))
               expectStatus(inspect(*type, object, number, code), unknown);
         }
      }
      expectStatus(inspect(*type, object, 65535, readCode), unknown);
      for (std::uint8_t const code : {readCode, callCode, boolCode, equalCode}) {
         GenericValue result;
         GenericValue target = object;
         EXPECT_EQ(type->functions().inspectOperation(result, target, nullptr, static_cast<InspectOpcode>(code), {}),
                   InspectStatus::unknownMember);
      }
   }
}

TEST_F(Reflection, objectsOfAnotherType) {
   Handle<Cli::ShowRsvpLerTunnel> const readOnly = command;
   GenericValue const objects[] = {GenericValue(), status, Ptr<Cli::ShowRsvpLerTunnel>(), String("object"),
                                   ShowRsvpLerTunnelFilter{}};
   for (GenericValue const& object : objects) {
      expectStatus(inspect(tunnelType, object, 153, readCode), refused);
      expectStatus(inspect(tunnelType, object, 154, readCode), refused);
      expectStatus(inspect(tunnelType, object, 153, writeCode, {std::uint8_t{1}}), refused);
      expectStatus(inspect(tunnelType, object, 174, callCode, {mbbId("t")}), refused);
   }
   // Through a handle on a const object what would change it is refused, and nothing else.
   expectValue(inspect(tunnelType, readOnly, 153, readCode), std::uint8_t{11});
   expectStatus(inspect(tunnelType, readOnly, 153, writeCode, {std::uint8_t{1}}), refused);
   expectHandle(inspect(tunnelType, readOnly, 174, callCode, {mbbId("t")}), command->getMbbTunnelConfig(mbbId("t")));
   expectStatus(inspect(tunnelType, readOnly, 211, callCode, {tunnelId("t")}), refused);
}

TEST_F(Reflection, construction) {
   auto const construct = [](TypeData const& type, Values const& arguments) {
      Outcome outcome{};
      outcome.result = String("untouched");
      outcome.status =
            static_cast<std::uint8_t>(type.functions().genericIfConstructFromCtorArgs(outcome.result, arguments));
      return outcome;
   };
   Values const four = {router.cliConfig, router.lerCliConfig, router.status, router.fathomStatus};
   Values const five = {router.lerConfig, router.lerCliConfig, router.status, router.fathomStatus,
                        router.featureConfigDir};
   Values const fourEmpty = {Handle<RsvpCliConfig>(), Handle<RsvpLerCliConfig>(), Handle<RsvpLerStatehubStatus>(),
                             Handle<RsvpLerFathomStatus>()};
   Values const swapped = {router.lerCliConfig, router.cliConfig, router.status, router.fathomStatus};

   Outcome const tunnels = construct(tunnelType, four);
   expectStatus(tunnels, success);
   auto const made = tunnels.result.get<Ptr<Cli::ShowRsvpLerTunnel>>();
   EXPECT_EQ(made->userCount(), 2u);
   EXPECT_EQ(made->rsvpCliConfig, router.cliConfig);
   EXPECT_EQ(made->rsvpLerFathomStatus, router.fathomStatus);
   Outcome const ofEmpty = construct(tunnelType, fourEmpty);
   expectStatus(ofEmpty, success);
   EXPECT_FALSE(ofEmpty.result.get<Ptr<Cli::ShowRsvpLerTunnel>>()->rsvpLerStatus);
   Outcome const ofStatus = construct(statusType, five);
   expectStatus(ofStatus, success);
   EXPECT_EQ(ofStatus.result.get<Ptr<Cli::ShowRsvpLer>>()->tallyFeatureConfigDir, router.featureConfigDir);

   expectStatus(construct(tunnelType, {}), refused);
   expectStatus(construct(tunnelType, five), refused);
   expectStatus(construct(tunnelType, swapped), refused);
   expectStatus(construct(tunnelType, {four[0], four[1], four[2], GenericValue()}), refused);
   expectStatus(construct(statusType, four), refused);
   EXPECT_EQ(tunnelType.functions().inspectConstruct, nullptr);
   EXPECT_EQ(statusType.functions().inspectEncodeToString, nullptr);
}

TEST_F(Reflection, byName) {
   TypeData const& type = typeNamed("Rsvp::Cli::ShowRsvpLerTunnel");
   EXPECT_EQ(&type, &tunnelType);
   GenericValue object =
         Brindle::construct(type, {router.cliConfig, router.lerCliConfig, router.status, router.fathomStatus});
   EXPECT_EQ(Brindle::read(type, object, "p2mpIdWidth").get<std::uint8_t>(), 7);
   Brindle::write(type, object, "p2mpIdWidth", std::uint8_t{9});
   EXPECT_EQ(Brindle::read(type, object, "p2mpIdWidth").get<std::uint8_t>(), 9);
   EXPECT_TRUE(Brindle::call(type, object, "getLspGroupStatus", {groupId("t")}).get<Handle<RsvpLerLspGroupStatus>>());

   auto const failure = [](auto&& action) -> std::string {
      try {
         action();
      } catch (Exception const& exception) {
         return exception.what();
      }
      return "none";
   };
   EXPECT_EQ(failure([] { typeNamed("Rsvp::Cli::Nothing"); }), "no loaded module has a type Rsvp::Cli::Nothing");
   EXPECT_EQ(failure([&] { Brindle::construct(type, {}); }),
             "Rsvp::Cli::ShowRsvpLerTunnel can't be made from these arguments");
   EXPECT_EQ(failure([&] { Brindle::read(type, object, "width"); }), "there is no Rsvp::Cli::ShowRsvpLerTunnel::width");
   EXPECT_EQ(failure([&] { Brindle::write(type, object, "tunnelNameMaxWidth", std::uint8_t{1}); }),
             "Rsvp::Cli::ShowRsvpLerTunnel::tunnelNameMaxWidth refused the request");
}
