#include "RsvpLer/frame/ModuleRecord.h"

#include "RsvpLer/RsvpLerCliCapi.h"
#include "tests/frame/VariantNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using namespace Brindle;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

ModuleInspectData const& record = _RsvpLerCliCapi_35b5d92e19a7383a_vaneModule;

char const* wordOf(TypeForm form) {
   switch (form) {
   case TypeForm::none:
      return "none";
   case TypeForm::boolean:
      return "bool";
   case TypeForm::u8:
      return "U8";
   case TypeForm::u16:
      return "U16";
   case TypeForm::u32:
      return "U32";
   case TypeForm::u64:
      return "U64";
   case TypeForm::string:
      return "String";
   case TypeForm::enumeration:
      return "enum ";
   case TypeForm::value:
      return "value ";
   case TypeForm::handle:
      return "handle ";
   case TypeForm::handleToConst:
      return "const handle ";
   }
   return "?";
}

// A type of another module as module.index, one of this module as its name.
std::string textOf(TypeUse const& use) {
   std::string const word = wordOf(use.form);
   if (use.form < TypeForm::enumeration)
      return word;
   if (use.ofThisModule)
      return word + std::string(record.typeNames[use.index]);
   TypeReference const& reference = record.typeReferences[use.index];
   return word + std::string(record.dependencies[reference.module]) + "." + std::to_string(reference.index);
}

std::string textOf(TypeData const& type, MemberData const& member) {
   static char const* const kinds[] = {"enumerator", "stored", "computed", "operation"};
   std::string text = std::to_string(member.number) + " " + kinds[static_cast<int>(member.kind)] + " " +
                      std::string(type.memberName(member));
   if (member.kind == MemberKind::operation) {
      std::string separator = "(";
      for (ArgumentData const& argument : type.signature(member).arguments()) {
         text += separator + std::string(argument.name) + " " + textOf(argument.type);
         separator = ", ";
      }
      text += ")";
   }
   return text + ": " + textOf(member.result);
}

std::vector<std::string> membersOf(TypeData const& type) {
   std::vector<std::string> texts;
   for (MemberData const& member : type.members())
      texts.push_back(textOf(type, member));
   return texts;
}

} // namespace

TEST(ModuleRecord, isAnnouncedWithItsDependencies) {
   EXPECT_EQ(ModuleInspectData::findModule("RsvpLerCliCapi"), &record);
   EXPECT_EQ(record.name, "RsvpLerCliCapi");
   EXPECT_THAT(record.dependencies,
               ElementsAre("RsvpCliConfig", "RsvpLerCliConfig", "RsvpLerConfig", "RsvpLerAutoBw", "RsvpLerAutoBwConfig",
                           "RsvpLerCspfPathKeyMapping", "RsvpLerHistory", "RsvpLerLspGroupStatus",
                           "RsvpLerLspRequestConfig", "RsvpLerLspRequestStatus", "RsvpLerMbbTunnelConfig",
                           "RsvpLerMbbTunnelStatus", "RsvpLerPathSpecConfig", "RsvpLerFathomStatus",
                           "RsvpLerStatehubStatus", "RsvpLerSubTunnelConfig", "RsvpLerSubTunnelIndexMap",
                           "RsvpLerSubTunnelStatus", "RsvpLerSuperTunnelConfig", "RsvpLerSuperTunnelStatus",
                           "RsvpLerTunnelIndexMap", "RsvpLerTunnelSpec", "RsvpLerTunnelSpecId", "AmbitTallyFeature"));
}

TEST(ModuleRecord, types) {
   EXPECT_THAT(record.typeNames, ElementsAre("Rsvp::Cli::ShowTunnelVariant", "Rsvp::Cli::ShowRsvpLerTunnelFilter",
                                             "Rsvp::Cli::ShowRsvpLerTunnel", "Rsvp::Cli::ShowRsvpLer"));
   TypeKind const kinds[] = {TypeKind::enumeration, TypeKind::value, TypeKind::objectClass, TypeKind::objectClass};
   std::size_t const memberCounts[] = {13, 2, 58, 14};
   ASSERT_EQ(record.types.size(), 4u);
   ASSERT_EQ(record.functionTables.size(), 4u);
   for (std::uint16_t number = 0; number < 4; ++number) {
      TypeData const& type = record.types[number];
      EXPECT_EQ(type.number, number);
      EXPECT_EQ(type.kind, kinds[number]) << number;
      EXPECT_EQ(type.members().size(), memberCounts[number]) << number;
      EXPECT_EQ(type.module, &record);
      EXPECT_EQ(&type.functions(), &record.functionTables[number]);
      EXPECT_EQ(ModuleInspectData::findType(record.typeNames[number]), &type);
   }
   EXPECT_EQ(record.members.size(), 13u + 2 + 58 + 14);
   EXPECT_EQ(record.memberNames.size(), record.members.size());
   EXPECT_EQ(record.signatures.size(), 0u + 1 + 14 + 2);
   EXPECT_EQ(ModuleInspectData::findType("ShowRsvpLer"), nullptr);
}

TEST(ModuleRecord, objectsNameTheirType) {
   EXPECT_EQ(Rsvp::Cli::showRsvpLerTunnelFactory({}, {}, {}, {})->typeData(), &record.types[2]);
   EXPECT_EQ(Rsvp::Cli::showRsvpLerFactory({}, {}, {}, {}, {})->typeData(), &record.types[3]);
}

TEST(ModuleRecord, everyReferenceIsUsedAndEveryDependencyReferredTo) {
   std::set<std::uint16_t> used;
   for (MemberData const& member : record.members) {
      if (member.result.form >= TypeForm::enumeration && !member.result.ofThisModule)
         used.insert(member.result.index);
   }
   for (OperationSignature const& signature : record.signatures) {
      for (ArgumentData const& argument : signature.arguments()) {
         if (argument.type.form >= TypeForm::enumeration && !argument.type.ofThisModule)
            used.insert(argument.type.index);
      }
   }
   EXPECT_EQ(used.size(), record.typeReferences.size());
   std::set<std::pair<std::uint16_t, std::uint16_t>> distinct;
   std::set<std::uint16_t> modules;
   for (TypeReference const& reference : record.typeReferences) {
      distinct.insert({reference.module, reference.index});
      modules.insert(reference.module);
   }
   EXPECT_EQ(distinct.size(), record.typeReferences.size());
   EXPECT_EQ(modules.size(), 24u);
}

TEST(ModuleRecord, variantMembers) {
   std::vector<std::string> expected;
   for (char const* name : Tests::variantNames)
      expected.push_back(std::to_string(expected.size()) + " enumerator " + name +
                         ": enum Rsvp::Cli::ShowTunnelVariant");
   EXPECT_THAT(membersOf(record.types[0]), ElementsAreArray(expected));
}

TEST(ModuleRecord, filterMembers) {
   EXPECT_THAT(membersOf(record.types[1]),
               ElementsAre("2 stored tunnelName: String", "3 operation match(tunnelSpecId value RsvpLerTunnelSpecId.0, "
                                                          "rsvpLerStatus const handle RsvpLerStatehubStatus.0): bool"));
}

TEST(ModuleRecord, tunnelMembers) {
   char const* const expected[] = {
         "130 stored rsvpCliConfig: const handle RsvpCliConfig.0",
         "131 stored rsvpLerCliConfig: const handle RsvpLerCliConfig.0",
         "132 stored rsvpLerStatus: const handle RsvpLerStatehubStatus.0",
         "133 stored rsvpLerFathomStatus: const handle RsvpLerFathomStatus.0",
         "134 computed pathSpecConfigColl: const handle RsvpLerPathSpecConfig.0",
         "135 computed tunnelSpecColl: const handle RsvpLerTunnelSpec.0",
         "136 computed superTunnelConfigColl: const handle RsvpLerSuperTunnelConfig.1",
         "137 computed superTunnelStatusColl: const handle RsvpLerSuperTunnelStatus.0",
         "138 computed subTunnelConfigCollTable: const handle RsvpLerSubTunnelConfig.1",
         "139 computed subTunnelStatusCollTable: const handle RsvpLerSubTunnelStatus.1",
         "140 computed mbbTunnelConfigCollTable: const handle RsvpLerMbbTunnelConfig.2",
         "141 computed mbbTunnelStatusCollTable: const handle RsvpLerMbbTunnelStatus.1",
         "142 computed tunnelIndexMap: const handle RsvpLerTunnelIndexMap.0",
         "143 computed subTunnelIndexMap: const handle RsvpLerSubTunnelIndexMap.0",
         "144 computed lspGroupStatusCollTable: const handle RsvpLerLspGroupStatus.2",
         "145 computed lspRequestConfigCollTable: const handle RsvpLerLspRequestConfig.2",
         "146 computed lspRequestStatusCollTable: const handle RsvpLerLspRequestStatus.2",
         "147 computed bwSamplingStatusColl: const handle RsvpLerAutoBw.0",
         "148 computed autoBwStats: const handle RsvpLerAutoBw.1",
         "149 computed autoBwConfig: const handle RsvpLerAutoBwConfig.0",
         "150 computed rsvpLerTunnelHistory: const handle RsvpLerHistory.0",
         "151 computed rsvpLerSubTunnelHistory: const handle RsvpLerHistory.1",
         "152 computed cspfPathKeyMapping: const handle RsvpLerCspfPathKeyMapping.0",
         "153 stored tunnelNameWidth: U8",
         "154 computed tunnelNameMaxWidth: U8",
         "155 stored dstWidth: U8",
         "156 stored colorWidth: U8",
         "157 stored indexWidth: U8",
         "158 computed activePathWidth: U64",
         "159 stored bwWidth: U8",
         "160 stored bw1000: bool",
         "161 stored sampledBwWidth: U8",
         "162 computed lspCountWidth: U64",
         "163 stored stateWidth: U8",
         "164 stored p2mpTunnelNameWidth: U8",
         "165 stored p2mpIdWidth: U8",
         "166 stored p2mpIndexWidth: U8",
         "167 stored p2mpBwWidth: U8",
         "168 stored p2mpBw1000: bool",
         "169 computed p2mpLspCountWidth: U64",
         "170 stored p2mpStateWidth: U8",
         "171 stored p2mpLeavesWidth: U8",
         "172 stored subTunnelIdWidth: U8",
         "173 stored sessionIdWidth: U8",
         ("174 operation getMbbTunnelConfig(mbbTunnelConfigId value RsvpLerMbbTunnelConfig.0): "
          "const handle RsvpLerMbbTunnelConfig.1"),
         ("175 operation getMbbTunnelStatus(mbbTunnelConfigId value RsvpLerMbbTunnelConfig.0): "
          "const handle RsvpLerMbbTunnelStatus.0"),
         ("176 operation getLspGroupStatus(lspGroupId value RsvpLerLspGroupStatus.0): "
          "const handle RsvpLerLspGroupStatus.1"),
         ("177 operation getLspGroupStatusByGroupId(activeMbbTunnelConfigId value RsvpLerMbbTunnelConfig.0, "
          "pendingMbbTunnelConfigId value RsvpLerMbbTunnelConfig.0, groupId U8): const handle RsvpLerLspGroupStatus.1"),
         ("178 operation getLspRequestConfig(lspRequestConfigId value RsvpLerLspRequestConfig.0): "
          "const handle RsvpLerLspRequestConfig.1"),
         ("179 operation getLspRequestStatus(lspRequestConfigId value RsvpLerLspRequestConfig.0): "
          "const handle RsvpLerLspRequestStatus.0"),
         "180 operation getRequestedBwBpsForSuperTunnel(subTunnelColl const handle RsvpLerSubTunnelStatus.0): U64",
         ("184 operation aggregateLspErrors(lspRequestConfigId value RsvpLerLspRequestConfig.0, "
          "aggregatedErrors handle RsvpLerLspRequestStatus.1): none"),
         ("185 operation aggregateLspGroupErrors(lspGroupId value RsvpLerLspGroupStatus.0, "
          "aggregatedErrors handle RsvpLerLspRequestStatus.1): none"),
         "211 operation setP2pTunnelSummaryHeaderColSizes(tunnelSpecId value RsvpLerTunnelSpecId.0): none",
         ("214 operation setSubTunnelSummaryHeaderColSizes(tunnelSpecId value RsvpLerTunnelSpecId.0, "
          "subTunnelConfigId value RsvpLerSubTunnelConfig.0, bwSamplingStatusColl const handle RsvpLerAutoBw.0, "
          "subTunnelIndexMap const handle RsvpLerSubTunnelIndexMap.0): none"),
         "217 operation setP2mpTunnelSummaryHeaderColSizes(tunnelSpecId value RsvpLerTunnelSpecId.0): none",
         ("250 operation getShowTunnelVariantEnum(sessionType enum RsvpLerSuperTunnelConfig.0, summary bool, "
          "lspDetails bool, detail bool, history bool, subTunnel bool): enum Rsvp::Cli::ShowTunnelVariant"),
         ("252 operation render(socket U32, format U32, tunnelFilter value Rsvp::Cli::ShowRsvpLerTunnelFilter, "
          "summary bool, lspDetails bool, detail bool, history bool, subTunnel bool): none"),
   };
   EXPECT_THAT(membersOf(record.types[2]), ElementsAreArray(expected));
}

TEST(ModuleRecord, statusMembers) {
   char const* const expected[] = {
         "130 stored rsvpLerConfig: const handle RsvpLerConfig.0",
         "131 stored rsvpLerCliConfig: const handle RsvpLerCliConfig.0",
         "132 stored rsvpLerStatus: const handle RsvpLerStatehubStatus.0",
         "133 stored rsvpLerFathomStatus: const handle RsvpLerFathomStatus.0",
         "134 stored tallyFeatureConfigDir: const handle AmbitTallyFeature.0",
         "135 computed superTunnelConfigColl: const handle RsvpLerSuperTunnelConfig.1",
         "136 computed superTunnelStatusColl: const handle RsvpLerSuperTunnelStatus.0",
         "137 computed subTunnelConfigCollTable: const handle RsvpLerSubTunnelConfig.1",
         "138 computed subTunnelStatusCollTable: const handle RsvpLerSubTunnelStatus.1",
         "139 computed mbbTunnelStatusCollTable: const handle RsvpLerMbbTunnelStatus.1",
         "140 computed lspGroupStatusCollTable: const handle RsvpLerLspGroupStatus.2",
         "141 computed lspRequestStatusCollTable: const handle RsvpLerLspRequestStatus.2",
         ("142 operation getLspRequestStatus(lspRequestConfigId value RsvpLerLspRequestConfig.0): "
          "const handle RsvpLerLspRequestStatus.0"),
         "143 operation render(socket U32, format U32): none",
   };
   EXPECT_THAT(membersOf(record.types[3]), ElementsAreArray(expected));
}
