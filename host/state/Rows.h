#pragma once

#include "host/state/TableRow.h"

// The row of each table that a root holds. Those of the collections inside them are where the rows themselves are.

namespace Host {

// RsvpLerFathomStatus
template<>
RowOf<Rsvp::RsvpLerSuperTunnelConfigColl> readRow<Rsvp::RsvpLerSuperTunnelConfigColl>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerAutoBwConfig> readRow<Rsvp::RsvpLerAutoBwConfig>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerTunnelHistory> readRow<Rsvp::RsvpLerTunnelHistory>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerSubTunnelHistory> readRow<Rsvp::RsvpLerSubTunnelHistory>(JsonReader&, JsonValue&);

// RsvpLerStatehubStatus
template<>
RowOf<Rsvp::RsvpLerPathSpecConfigColl> readRow<Rsvp::RsvpLerPathSpecConfigColl>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerTunnelSpecPtrConstColl> readRow<Rsvp::RsvpLerTunnelSpecPtrConstColl>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerAutoBwStats> readRow<Rsvp::RsvpLerAutoBwStats>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerBwSamplingStatusColl> readRow<Rsvp::RsvpLerBwSamplingStatusColl>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerTunnelIndexMap> readRow<Rsvp::RsvpLerTunnelIndexMap>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerSubTunnelIndexMap> readRow<Rsvp::RsvpLerSubTunnelIndexMap>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerSuperTunnelStatusColl> readRow<Rsvp::RsvpLerSuperTunnelStatusColl>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerSubTunnelConfigCollTable> readRow<Rsvp::RsvpLerSubTunnelConfigCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerSubTunnelStatusCollTable> readRow<Rsvp::RsvpLerSubTunnelStatusCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerMbbTunnelConfigCollTable> readRow<Rsvp::RsvpLerMbbTunnelConfigCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerMbbTunnelStatusCollTable> readRow<Rsvp::RsvpLerMbbTunnelStatusCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerLspGroupStatusCollTable> readRow<Rsvp::RsvpLerLspGroupStatusCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerLspRequestConfigCollTable> readRow<Rsvp::RsvpLerLspRequestConfigCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerLspRequestStatusCollTable> readRow<Rsvp::RsvpLerLspRequestStatusCollTable>(JsonReader&, JsonValue&);
template<>
RowOf<Rsvp::RsvpLerCspfPathKeyMapping> readRow<Rsvp::RsvpLerCspfPathKeyMapping>(JsonReader&, JsonValue&);

} // namespace Host
