#pragma once

#include "RsvpLer/state/Keys.h"
#include "skein/TraceFormat.h"

// How the keys look in traces: each as its text form, with a place for each of its fields.

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerTunnelSource>
      : EnumerationFormat<Rsvp::RsvpLerTunnelSource, "RsvpLerTunnelSource"> {};

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerTunnelSpecId>
      : RecordFormat<"RsvpLerTunnelSpecId", "<name='{}'>_<source='{}'>", &Rsvp::RsvpLerTunnelSpecId::name,
                     &Rsvp::RsvpLerTunnelSpecId::source> {};

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerPathSpecId>
      : RecordFormat<"RsvpLerPathSpecId", "<name='{}'>_<source='{}'>", &Rsvp::RsvpLerPathSpecId::name,
                     &Rsvp::RsvpLerPathSpecId::source> {};

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerSubTunnelConfigId>
      : RecordFormat<"RsvpLerSubTunnelConfigId", "{}_<subTunnelId={}>", &Rsvp::RsvpLerSubTunnelConfigId::tunnelSpecId,
                     &Rsvp::RsvpLerSubTunnelConfigId::subTunnelId> {};

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerMbbTunnelConfigId>
      : RecordFormat<"RsvpLerMbbTunnelConfigId", "{}_<epoch={}>", &Rsvp::RsvpLerMbbTunnelConfigId::subTunnelConfigId,
                     &Rsvp::RsvpLerMbbTunnelConfigId::epoch> {};

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerLspGroupId>
      : RecordFormat<"RsvpLerLspGroupId", "{}_<groupId={}>", &Rsvp::RsvpLerLspGroupId::mbbTunnelConfigId,
                     &Rsvp::RsvpLerLspGroupId::groupId> {};

template<>
struct Skein::TraceFormat<Rsvp::RsvpLerLspRequestConfigId>
      : RecordFormat<"RsvpLerLspRequestConfigId", "{}_<configId={}>", &Rsvp::RsvpLerLspRequestConfigId::lspGroupId,
                     &Rsvp::RsvpLerLspRequestConfigId::configId> {};
