#pragma once

#include "RsvpLer/frame/ModuleRecord.h"
#include "tests/support/Answer.h"
#include "tests/support/Router.h"

#include <gtest/gtest.h>

#include <map>
#include <type_traits>
#include <vector>

// Operations on the command objects through the module's record.

namespace Tests {

using Values = std::vector<Brindle::GenericValue>;

inline constexpr std::uint8_t success = 0;
inline constexpr std::uint8_t refused = 1;
inline constexpr std::uint8_t unknown = 2;
inline constexpr std::uint8_t readCode = 0;
inline constexpr std::uint8_t writeCode = 1;
inline constexpr std::uint8_t callCode = 10;
inline constexpr std::uint8_t boolCode = 11;
inline constexpr std::uint8_t equalCode = 12;

inline Brindle::TypeData const& tunnelType = _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule.types[2];
inline Brindle::TypeData const& statusType = _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule.types[3];

// What an operation on one member gives back.
struct Outcome {
   std::uint8_t status;
   Brindle::GenericValue result;
};

inline Outcome inspect(Brindle::TypeData const& type, Brindle::GenericValue object, int member, std::uint8_t opcode,
                       Values const& arguments = {}) {
   Outcome outcome{};
   outcome.result = Brindle::String("untouched");
   Brindle::MemberDescriptor const descriptor{static_cast<std::uint16_t>(member)};
   outcome.status = static_cast<std::uint8_t>(type.functions().inspectOperation(
         outcome.result, object, &descriptor, static_cast<Brindle::InspectOpcode>(opcode), arguments));
   return outcome;
}

// A refusal leaves the result as it was.
inline void expectStatus(Outcome const& outcome, std::uint8_t status) {
   EXPECT_EQ(outcome.status, status);
   if (status != success) {
      ASSERT_TRUE(outcome.result.holds<Brindle::String>());
      EXPECT_EQ(outcome.result.get<Brindle::String>(), "untouched");
   }
}

template<class T>
void expectHandle(Outcome const& outcome, Brindle::Ptr<T> const& expected) {
   ASSERT_EQ(outcome.status, success);
   ASSERT_TRUE(outcome.result.holds<Rsvp::Handle<T>>());
   EXPECT_EQ(outcome.result.get<Rsvp::Handle<T>>(), expected);
   EXPECT_FALSE(outcome.result.holds<Brindle::Ptr<std::remove_const_t<T>>>())
         << "records can't be changed through the command object";
}

template<class T>
void expectValue(Outcome const& outcome, T const& expected) {
   ASSERT_EQ(outcome.status, success);
   ASSERT_TRUE(outcome.result.holds<T>());
   EXPECT_EQ(outcome.result.get<T>(), expected);
}

// A state in which every table holds something that a lookup can find.
class Reflection : public testing::Test {
protected:
   Reflection() {
      router.mbbTunnelConfig(mbbId("t"), 125);
      router.mbbTunnelStatus(mbbId("t"), groupId("t"));
      router.lspGroupStatus(groupId("t"), [](auto& group) { group.activeLspRequestConfigId = requestId("t"); });
      router.lspRequestConfig(requestId("t"), [](auto&) {});
      router.lspRequestStatus(requestId("t"), [](auto& record) {
         record.errors.set({24, 5, address("10.0.0.3")}, {});
      });
      router.subTunnelStatus(subTunnelId("t"), [](auto& record) { record.activeMbbTunnelConfigId = mbbId("t"); });
      command = router.tunnelCommand();
      status = router.statusCommand();
   }

   // Arguments with which each operation of the tunnel object can be called.
   std::map<int, Values> operations() const {
      auto const errors = Brindle::makeNode<Rsvp::RsvpErrorWithNodeOrderedSet>();
      return {{174, {mbbId("t")}},
              {175, {mbbId("t")}},
              {176, {groupId("t")}},
              {177, {mbbId("t"), mbbId("t", 2), std::uint8_t{0}}},
              {178, {requestId("t")}},
              {179, {requestId("t")}},
              {180, {router.status->subTunnelStatusCollTable.get()->find(tunnelId("t"))}},
              {184, {requestId("t"), errors}},
              {185, {groupId("t"), errors}},
              {211, {tunnelId("t")}},
              {214,
               {tunnelId("t"), subTunnelId("t"), router.status->bwSamplingStatusColl.get(),
                router.status->subTunnelIndexMap.get()}},
              {217, {tunnelId("t")}},
              {250, {Rsvp::RsvpSessionType::p2p, false, false, true, false, false}},
              {252,
               {std::uint32_t{1}, std::uint32_t{0}, Rsvp::Cli::ShowRsvpLerTunnelFilter{}, true, false, false, false,
                false}}};
   }

   Router router;
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLerTunnel> command;
   Brindle::Ptr<Rsvp::Cli::ShowRsvpLer> status;
};

} // namespace Tests
