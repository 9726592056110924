#include "tests/platform/SyntheticModule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

using namespace Brindle;
using testing::ElementsAre;
using Tests::SyntheticModule;

namespace {

bool isThere(SyntheticModule const& module) {
   return ModuleInspectData::findModule(module.data.name) == &module.data &&
          ModuleInspectData::findType(module.typeNames[0]) == &module.types[0] &&
          ModuleInspectData::findType(module.typeNames[1]) == &module.types[1];
}

} // namespace

TEST(ModuleRegistry, findsWhatIsLoadedAndNothingElse) {
   SyntheticModule const one("One", "A::First", "A::Second");
   SyntheticModule const two("Two", "B::First", "B::Second");
   EXPECT_EQ(ModuleInspectData::findModule("One"), nullptr);
   EXPECT_EQ(ModuleInspectData::findType("A::First"), nullptr);
   {
      ModuleRegistration const ofOne(one.data);
      ModuleRegistration const ofTwo(two.data);
      EXPECT_TRUE(isThere(one));
      EXPECT_TRUE(isThere(two));
      EXPECT_EQ(ModuleInspectData::findType("A::Third"), nullptr);
      EXPECT_EQ(ModuleInspectData::findType(""), nullptr);
      EXPECT_EQ(one.types[1].name(), "A::Second");
   }
   EXPECT_EQ(ModuleInspectData::findModule("One"), nullptr);
   EXPECT_EQ(ModuleInspectData::findType("B::Second"), nullptr);
   EXPECT_THAT(ModuleInspectData::takeLoadErrors(), ElementsAre());
}

TEST(ModuleRegistry, turnsAwayWhatIsAlreadyThere) {
   SyntheticModule const first("One", "A::First", "A::Second");
   SyntheticModule const sameName("One", "C::First", "C::Second");
   SyntheticModule const sameType("Three", "D::First", "A::Second");
   std::optional<ModuleRegistration> registration(std::in_place, first.data);
   {
      ModuleRegistration const again(first.data);
      ModuleRegistration const ofSameName(sameName.data);
      ModuleRegistration const ofSameType(sameType.data);
      EXPECT_TRUE(isThere(first));
      EXPECT_EQ(ModuleInspectData::findType("C::First"), nullptr);
      EXPECT_EQ(ModuleInspectData::findModule("Three"), nullptr);
      EXPECT_EQ(ModuleInspectData::findType("D::First"), nullptr);
   }
   EXPECT_TRUE(isThere(first)) << "a module that was turned away withdraws nothing";
   EXPECT_THAT(ModuleInspectData::takeLoadErrors(),
               ElementsAre("module One was announced twice", "another module of the name One is already loaded",
                           "module Three: module One already has a type A::Second"));
   EXPECT_THAT(ModuleInspectData::takeLoadErrors(), ElementsAre());
   registration.reset();
   ModuleRegistration const later(sameName.data);
   EXPECT_TRUE(isThere(sameName));
}
