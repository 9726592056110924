#pragma once

#include "bench/TunnelValues.h"

// The JSON of the plain view, which is also that of the detailed one, by direct calls on a writer with the operations
// of scrivo::RendererV2.

namespace Bench {

template<class Out>
void writeHops(Out& out, Hops const& hops) {
   out.startJsonList("hops");
   for (Lattice::IpGenAddr const& hop : hops)
      out.addJsonKeyValuePair("", hop);
   out.endJsonList();
}

template<class Out>
void writeErrors(Out& out, std::vector<ErrorValues> const& errors) {
   for (ErrorValues const& error : errors) {
      out.startJsonDict();
      out.addJsonKeyValuePair("code", error.code);
      out.addJsonKeyValuePair("value", error.value);
      out.addJsonKeyValuePair("node", error.node);
      out.endJsonDict();
   }
   out.endJsonList();
}

template<class Out>
void writePathState(Out& out, PathValues const& path) {
   out.addJsonKeyValuePair("state", path.state);
   out.addJsonKeyValuePair("mbb", path.mbb);
   out.addJsonKeyValuePair("inUse", path.inUse);
   if (path.pathMtu.hasValue())
      out.addJsonKeyValuePair("pathMtu", path.pathMtu.value());
}

template<class Out>
void writePath(Out& out, PathValues const& path, bool primary) {
   out.addJsonKeyValuePair("specName", path.specName);
   if (!primary)
      out.addJsonKeyValuePair("preSignaled", path.preSignaled);
   writePathState(out, path);
   if (path.intfMtu.hasValue())
      out.addJsonKeyValuePair("intfMtu", path.intfMtu.value());
   if (path.cspfId.hasValue())
      out.addJsonKeyValuePair("cspfPathKeyId", path.cspfId.value());
   out.startJsonList("pathErrors");
   writeErrors(out, path.errors);
   out.addJsonKeyValuePair("specType", path.specType);
   writeHops(out, path.hops);
   out.endJsonDict();
}

template<class Out>
void writePaths(Out& out, SubTunnelValues const& values) {
   if (values.hasPrimary) {
      out.startJsonDict("primaryPath");
      writePath(out, values.primary, true);
   }
   out.startJsonList("secondaryPaths");
   if (values.hasSecondary) {
      out.startJsonDict();
      writePath(out, values.secondary, false);
   }
   out.endJsonList();
}

template<class Out>
void writeTree(Out& out, PathValues const& tree) {
   out.startJsonDict("primaryTree");
   out.addJsonKeyValuePair("specName", tree.specName);
   writePathState(out, tree);
   if (tree.intfMtu.hasValue()) {
      out.startJsonDict("intfMtus");
      out.addJsonKeyValuePair(tree.intfName, tree.intfMtu.value());
      out.endJsonDict();
   }
   if (tree.cspfId.hasValue())
      out.addJsonKeyValuePair("cspfTreeId", tree.cspfId.value());
   out.startJsonList("treeErrors");
   writeErrors(out, tree.errors);
   out.addJsonKeyValuePair("specType", tree.specType);
   out.startJsonDict("treeLeaves");
   for (std::size_t i = 0; i < tree.leafCount; ++i) {
      LeafValues const& leaf = tree.leaves[i];
      char text[Lattice::IpGenAddr::textSize];
      out.startJsonDict(std::string_view(text, leaf.address.printToBuffer(text, sizeof text)));
      out.addJsonKeyValuePair("state", leaf.state);
      if (!leaf.hops.empty())
         writeHops(out, leaf.hops);
      out.endJsonDict();
   }
   out.endJsonDict();
   out.endJsonDict();
}

template<class Out>
void writeLspIds(Out& out, SubTunnelValues const& values) {
   out.startJsonList("lspIds");
   for (auto const& id : values.lspIds) {
      if (id.hasValue())
         out.addJsonKeyValuePair("", id.value());
   }
   out.endJsonList();
}

template<class Out>
void writeSubTunnel(Out& out, SubTunnelValues const& values, bool autoBandwidth) {
   out.startJsonDict(std::string_view(std::to_string(values.id)));
   out.addJsonKeyValuePair("currentBandwidth", values.currentBandwidth);
   if (values.nextAdjustment.hasValue())
      out.addJsonKeyValuePair("nextAdjustmentTime", values.nextAdjustment.value());
   if (autoBandwidth)
      out.addJsonKeyValuePair("lastSampledBandwidth", values.lastSampledBandwidth);
   if (values.sessionId.hasValue())
      out.addJsonKeyValuePair("sessionId", values.sessionId.value());
   if (values.index.hasValue())
      out.addJsonKeyValuePair("tunnelIndex", values.index.value());
   out.addJsonKeyValuePair("state", values.state);
   out.addJsonKeyValuePair("mbb", values.mbb);
   out.addJsonKeyValuePair("lspCount", static_cast<std::uint32_t>(values.lspIds.size()));
   writeLspIds(out, values);
   out.addJsonKeyValuePair("activePathType", values.activePathType);
   writePaths(out, values);
   out.endJsonDict();
}

template<class Out>
void writeIdentity(Out& out, TunnelValues const& values) {
   out.addJsonKeyValuePair("source", values.source);
   out.addJsonKeyValuePair("destination", values.destination);
   if (values.p2mpId.hasValue())
      out.addJsonKeyValuePair("p2mpId", values.p2mpId.value());
   out.addJsonKeyValuePair("configSource", values.configSource);
   if (!values.profile.empty()) {
      out.addJsonKeyValuePair("profile", values.profile);
      out.addJsonKeyValuePair("profileState", values.profileState);
   }
   if (!values.aliasTeps.empty()) {
      out.startJsonList("aliasTeps");
      for (Lattice::IpGenAddr const& endpoint : values.aliasTeps)
         out.addJsonKeyValuePair("", endpoint);
      out.endJsonList();
   }
   if (values.color.isSet())
      out.addJsonKeyValuePair("color", values.color.value());
   out.addJsonKeyValuePair("metricMode", std::string_view(values.dynamicMetric ? "dynamic" : "static"));
   out.addJsonKeyValuePair("metric", values.metric);
   out.addJsonKeyValuePair("state", values.state);
   out.addJsonKeyValuePair("mbb", values.own.mbb);
   out.addJsonKeyValuePair("splitTunnel", values.splitEnabled);
   if (values.splitEnabled) {
      out.startJsonDict("splitTunnelParams");
      out.addJsonKeyValuePair("quantum", values.quantum);
      out.addJsonKeyValuePair("subTunnelMinimum", values.subTunnelMinimum);
      out.addJsonKeyValuePair("subTunnelLimit", values.subTunnelLimit);
      out.addJsonKeyValuePair("subTunnelInitial", values.subTunnelInitial);
      out.addJsonKeyValuePair("minBandwidth", values.minSplitBandwidth);
      out.addJsonKeyValuePair("maxBandwidth", values.maxSplitBandwidth);
      out.addJsonKeyValuePair("reductionDelay", values.reductionDelay);
      out.endJsonDict();
   }
}

template<class Out>
void writeBandwidth(Out& out, TunnelValues const& values) {
   out.addJsonKeyValuePair("currentBandwidth", values.currentBandwidth);
   out.addJsonKeyValuePair("requestedBandwidth", values.requestedBandwidth);
   out.addJsonKeyValuePair("autoBandwidth", values.autoBandwidth);
   out.addJsonKeyValuePair("signalBandwidth", values.signalBandwidth);
   if (values.autoBandwidth) {
      out.startJsonDict("autoBandwidthParams");
      out.addJsonKeyValuePair("adjustmentPeriod", values.adjustmentPeriod);
      if (values.nextAdjustment.hasValue())
         out.addJsonKeyValuePair("nextAdjustmentTime", values.nextAdjustment.value());
      out.addJsonKeyValuePair("minBandwidth", values.minBandwidth);
      out.addJsonKeyValuePair("maxBandwidth", values.maxBandwidth);
      out.addJsonKeyValuePair("lastSampledBandwidth", values.lastSampledBandwidth);
      out.endJsonDict();
   }
}

template<class Out>
void writeTunnel(Out& out, TunnelValues const& values) {
   out.startJsonDict(values.name);
   writeIdentity(out, values);
   writeBandwidth(out, values);
   out.addJsonKeyValuePair("setupPriority", values.setupPriority);
   out.addJsonKeyValuePair("holdPriority", values.holdPriority);
   out.addJsonKeyValuePair("frrMode", values.frrMode);
   out.addJsonKeyValuePair("optimizationInterval", values.optimizationInterval);
   if (!values.p2mp && values.own.sessionId.hasValue())
      out.addJsonKeyValuePair("sessionId", values.own.sessionId.value());
   if (values.index.hasValue())
      out.addJsonKeyValuePair("tunnelIndex", values.index.value());
   out.addJsonKeyValuePair("lspCount", static_cast<std::uint32_t>(values.own.lspIds.size()));
   if (!values.split)
      writeLspIds(out, values.own);
   if (!values.p2mp) {
      out.addJsonKeyValuePair("ldpTunneling", values.ldpTunneling);
      out.addJsonKeyValuePair("ldpTunnelingUcmp", values.ldpTunnelingUcmp);
      out.addJsonKeyValuePair("igpShortcut", values.igpShortcut);
   }
   out.addJsonKeyValuePair("activePathType", values.own.activePathType);
   if (values.p2mp) {
      if (values.own.hasPrimary)
         writeTree(out, values.own.primary);
   } else {
      if (!values.split)
         writePaths(out, values.own);
      out.startJsonDict("subTunnels");
      for (std::size_t i = 0; i < values.subTunnelCount; ++i)
         writeSubTunnel(out, values.subTunnels[i], values.autoBandwidth);
      out.endJsonDict();
   }
   out.endJsonDict();
}

} // namespace Bench
