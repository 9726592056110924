#pragma once

#include "RsvpLer/output/StackBackedBuffer.h"
#include "RsvpLer/state/HistoryRecords.h"

namespace Rsvp::Cli {

// Where a sentence is assembled: up to 128 bytes of it stay off the heap.
using Sentence = Kerf::StackBackedBuffer<128, 1024>;

// Appends what happened, in the words that both formats show: "LSP ID 3 added (MBB, replacing LSP ID 2)". An unknown
// event has no words. `isSubTunnel` chooses the noun of a creation; the path words stand for a P2P session alone.
void writeEventSentence(Sentence& sentence, RsvpLerTunnelHistoryEntry const& entry, bool isSubTunnel,
                        RsvpSessionType sessionType);

} // namespace Rsvp::Cli
