#pragma once

#include "RsvpLer/frame/ModuleTypes.h"

#include <array>

// The members that the command layer reaches by number or name, declared once. The gaps in the numbers belong to the
// members that aren't published: the section functions and the display functions.

namespace Rsvp::Cli {

using Declare = Brindle::Declare<ModuleTypes>;

inline constexpr auto showTunnelVariantMembers =
      Declare::enumeratorMembers<ShowTunnelVariant, showTunnelVariantEnumerators>();

inline constexpr auto showRsvpLerTunnelFilterMembers = std::to_array<Brindle::MemberDeclaration>({
      Declare::attribute<&ShowRsvpLerTunnelFilter::tunnelName>(2, "tunnelName"),
      Declare::operation<&ShowRsvpLerTunnelFilter::match>(3, "match", {"tunnelSpecId", "rsvpLerStatus"}),
});

inline constexpr auto showRsvpLerTunnelMembers = std::to_array<Brindle::MemberDeclaration>({
      Declare::attribute<&ShowRsvpLerTunnel::rsvpCliConfig>(130, "rsvpCliConfig"),
      Declare::attribute<&ShowRsvpLerTunnel::rsvpLerCliConfig>(131, "rsvpLerCliConfig"),
      Declare::attribute<&ShowRsvpLerTunnel::rsvpLerStatus>(132, "rsvpLerStatus"),
      Declare::attribute<&ShowRsvpLerTunnel::rsvpLerFathomStatus>(133, "rsvpLerFathomStatus"),

      Declare::attribute<&ShowRsvpLerTunnel::pathSpecConfigColl>(134, "pathSpecConfigColl"),
      Declare::attribute<&ShowRsvpLerTunnel::tunnelSpecColl>(135, "tunnelSpecColl"),
      Declare::attribute<&ShowRsvpLerTunnel::superTunnelConfigColl>(136, "superTunnelConfigColl"),
      Declare::attribute<&ShowRsvpLerTunnel::superTunnelStatusColl>(137, "superTunnelStatusColl"),
      Declare::attribute<&ShowRsvpLerTunnel::subTunnelConfigCollTable>(138, "subTunnelConfigCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::subTunnelStatusCollTable>(139, "subTunnelStatusCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::mbbTunnelConfigCollTable>(140, "mbbTunnelConfigCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::mbbTunnelStatusCollTable>(141, "mbbTunnelStatusCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::tunnelIndexMap>(142, "tunnelIndexMap"),
      Declare::attribute<&ShowRsvpLerTunnel::subTunnelIndexMap>(143, "subTunnelIndexMap"),
      Declare::attribute<&ShowRsvpLerTunnel::lspGroupStatusCollTable>(144, "lspGroupStatusCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::lspRequestConfigCollTable>(145, "lspRequestConfigCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::lspRequestStatusCollTable>(146, "lspRequestStatusCollTable"),
      Declare::attribute<&ShowRsvpLerTunnel::bwSamplingStatusColl>(147, "bwSamplingStatusColl"),
      Declare::attribute<&ShowRsvpLerTunnel::autoBwStats>(148, "autoBwStats"),
      Declare::attribute<&ShowRsvpLerTunnel::autoBwConfig>(149, "autoBwConfig"),
      Declare::attribute<&ShowRsvpLerTunnel::rsvpLerTunnelHistory>(150, "rsvpLerTunnelHistory"),
      Declare::attribute<&ShowRsvpLerTunnel::rsvpLerSubTunnelHistory>(151, "rsvpLerSubTunnelHistory"),
      Declare::attribute<&ShowRsvpLerTunnel::cspfPathKeyMapping>(152, "cspfPathKeyMapping"),

      Declare::attribute<&ShowRsvpLerTunnel::tunnelNameWidth>(153, "tunnelNameWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::tunnelNameMaxWidth>(154, "tunnelNameMaxWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::dstWidth>(155, "dstWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::colorWidth>(156, "colorWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::indexWidth>(157, "indexWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::activePathWidth>(158, "activePathWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::bwWidth>(159, "bwWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::bw1000>(160, "bw1000"),
      Declare::attribute<&ShowRsvpLerTunnel::sampledBwWidth>(161, "sampledBwWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::lspCountWidth>(162, "lspCountWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::stateWidth>(163, "stateWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpTunnelNameWidth>(164, "p2mpTunnelNameWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpIdWidth>(165, "p2mpIdWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpIndexWidth>(166, "p2mpIndexWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpBwWidth>(167, "p2mpBwWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpBw1000>(168, "p2mpBw1000"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpLspCountWidth>(169, "p2mpLspCountWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpStateWidth>(170, "p2mpStateWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::p2mpLeavesWidth>(171, "p2mpLeavesWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::subTunnelIdWidth>(172, "subTunnelIdWidth"),
      Declare::attribute<&ShowRsvpLerTunnel::sessionIdWidth>(173, "sessionIdWidth"),

      Declare::operation<&ShowRsvpLerTunnel::getMbbTunnelConfig>(174, "getMbbTunnelConfig", {"mbbTunnelConfigId"}),
      Declare::operation<&ShowRsvpLerTunnel::getMbbTunnelStatus>(175, "getMbbTunnelStatus", {"mbbTunnelConfigId"}),
      Declare::operation<&ShowRsvpLerTunnel::getLspGroupStatus>(176, "getLspGroupStatus", {"lspGroupId"}),
      Declare::operation<&ShowRsvpLerTunnel::getLspGroupStatusByGroupId>(
            177, "getLspGroupStatusByGroupId", {"activeMbbTunnelConfigId", "pendingMbbTunnelConfigId", "groupId"}),
      Declare::operation<&ShowRsvpLerTunnel::getLspRequestConfig>(178, "getLspRequestConfig", {"lspRequestConfigId"}),
      Declare::operation<&ShowRsvpLerTunnel::getLspRequestStatus>(179, "getLspRequestStatus", {"lspRequestConfigId"}),
      Declare::operation<&ShowRsvpLerTunnel::getRequestedBwBpsForSuperTunnel>(180, "getRequestedBwBpsForSuperTunnel",
                                                                              {"subTunnelColl"}),
      Declare::operation<&ShowRsvpLerTunnel::aggregateLspErrors>(184, "aggregateLspErrors",
                                                                 {"lspRequestConfigId", "aggregatedErrors"}),
      Declare::operation<&ShowRsvpLerTunnel::aggregateLspGroupErrors>(185, "aggregateLspGroupErrors",
                                                                      {"lspGroupId", "aggregatedErrors"}),
      Declare::operation<&ShowRsvpLerTunnel::setP2pTunnelSummaryHeaderColSizes>(
            211, "setP2pTunnelSummaryHeaderColSizes", {"tunnelSpecId"}),
      Declare::operation<&ShowRsvpLerTunnel::setSubTunnelSummaryHeaderColSizes>(
            214, "setSubTunnelSummaryHeaderColSizes",
            {"tunnelSpecId", "subTunnelConfigId", "bwSamplingStatusColl", "subTunnelIndexMap"}),
      Declare::operation<&ShowRsvpLerTunnel::setP2mpTunnelSummaryHeaderColSizes>(
            217, "setP2mpTunnelSummaryHeaderColSizes", {"tunnelSpecId"}),
      Declare::operation<&ShowRsvpLerTunnel::getShowTunnelVariantEnum>(
            250, "getShowTunnelVariantEnum",
            {"sessionType", "summary", "lspDetails", "detail", "history", "subTunnel"}),
      Declare::operation<&ShowRsvpLerTunnel::render>(
            252, "render",
            {"socket", "format", "tunnelFilter", "summary", "lspDetails", "detail", "history", "subTunnel"}),
});

inline constexpr auto showRsvpLerMembers = std::to_array<Brindle::MemberDeclaration>({
      Declare::attribute<&ShowRsvpLer::rsvpLerConfig>(130, "rsvpLerConfig"),
      Declare::attribute<&ShowRsvpLer::rsvpLerCliConfig>(131, "rsvpLerCliConfig"),
      Declare::attribute<&ShowRsvpLer::rsvpLerStatus>(132, "rsvpLerStatus"),
      Declare::attribute<&ShowRsvpLer::rsvpLerFathomStatus>(133, "rsvpLerFathomStatus"),
      Declare::attribute<&ShowRsvpLer::tallyFeatureConfigDir>(134, "tallyFeatureConfigDir"),

      Declare::attribute<&ShowRsvpLer::superTunnelConfigColl>(135, "superTunnelConfigColl"),
      Declare::attribute<&ShowRsvpLer::superTunnelStatusColl>(136, "superTunnelStatusColl"),
      Declare::attribute<&ShowRsvpLer::subTunnelConfigCollTable>(137, "subTunnelConfigCollTable"),
      Declare::attribute<&ShowRsvpLer::subTunnelStatusCollTable>(138, "subTunnelStatusCollTable"),
      Declare::attribute<&ShowRsvpLer::mbbTunnelStatusCollTable>(139, "mbbTunnelStatusCollTable"),
      Declare::attribute<&ShowRsvpLer::lspGroupStatusCollTable>(140, "lspGroupStatusCollTable"),
      Declare::attribute<&ShowRsvpLer::lspRequestStatusCollTable>(141, "lspRequestStatusCollTable"),

      Declare::operation<&ShowRsvpLer::getLspRequestStatus>(142, "getLspRequestStatus", {"lspRequestConfigId"}),
      Declare::operation<&ShowRsvpLer::render>(143, "render", {"socket", "format"}),
});

} // namespace Rsvp::Cli
