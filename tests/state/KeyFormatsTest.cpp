#include "RsvpLer/state/KeyFormats.h"

#include "tests/support/Router.h"
#include "tests/support/TraceDirectory.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace Rsvp;
using namespace Skein;

struct Row {
   std::string typeString;
   std::string format;
   std::string text;
   std::string hexText;
};

// What a trace file knows of the type, and what a record and a line of text show of the value.
template<class Key>
void check(Key const& key, char const* name, Row const& row) {
   SCOPED_TRACE(name);
   Tests::TraceDirectory const directory;
   TraceFile file(directory.file());
   MsgDesc description(file, "/src/here", 1, "f");
   Argument<Key>::describe(description, file, key);
   description.addText(" ");
   Argument<Hex<Key>>::describe(description, file, Hex(key));
   Msg record = file.ringBuf().startMsg(TraceFile::descriptionOf(description.finishMessage()), 1);
   Argument<Key>::put(record, key);
   Argument<Hex<Key>>::put(record, Hex(key));
   record.end();

   TraceReader const trace(directory.file());
   auto const known = trace.descriptions();
   ASSERT_GE(known.size(), 2u);
   Description const& type = known[known.size() - 2]; // before the message, and after the types it consists of
   EXPECT_EQ(fieldText(type.name), name);
   EXPECT_EQ(fieldText(type.typeString), row.typeString);
   EXPECT_EQ(fieldText(type.format), row.format);
   EXPECT_EQ(fieldText(known.back().typeString), row.typeString + "," + row.typeString);
   EXPECT_EQ(trace.record(0).value().arguments, row.text + " " + row.hexText);

   Twine::Text text;
   Argument<Key>::put(text, key);
   text.add(" ");
   Argument<Hex<Key>>::put(text, Hex(key));
   EXPECT_EQ(text.text(), row.text + " " + row.hexText);
}

template<class Key>
std::string streamed(Key const& key) {
   std::ostringstream out;
   out << key;
   return out.str();
}

TEST(KeyFormats, everyKey) {
   using namespace Tests;
   auto const source = RsvpLerTunnelSource::frrBypass;
   std::string const tunnel = "<name='tun1'>_<source='3'>";
   RsvpLerTunnelSpecId const tunnelSpecId("tun1", source);
   RsvpLerSubTunnelConfigId const subTunnelConfigId{tunnelSpecId, 4294967295};
   RsvpLerMbbTunnelConfigId const mbbTunnelConfigId{subTunnelConfigId, 31};
   RsvpLerLspGroupId const lspGroupId{mbbTunnelConfigId, 254};
   RsvpLerLspRequestConfigId const lspRequestConfigId{lspGroupId, 16};

   check(source, "RsvpLerTunnelSource", {"u", "{}", "3", "3"});
   check(tunnelSpecId, "RsvpLerTunnelSpecId", {"p,u", "<name='{}'>_<source='{}'>", tunnel, tunnel});
   check(RsvpLerPathSpecId("tun1", source), "RsvpLerPathSpecId", {"p,u", "<name='{}'>_<source='{}'>", tunnel, tunnel});
   check(subTunnelConfigId, "RsvpLerSubTunnelConfigId",
         {"p,u,i", "{}_<subTunnelId={}>", tunnel + "_<subTunnelId=4294967295>", tunnel + "_<subTunnelId=ffffffff>"});
   check(mbbTunnelConfigId, "RsvpLerMbbTunnelConfigId",
         {"p,u,i,i", "{}_<epoch={}>", tunnel + "_<subTunnelId=4294967295>_<epoch=31>",
          tunnel + "_<subTunnelId=ffffffff>_<epoch=1f>"});
   check(lspGroupId, "RsvpLerLspGroupId",
         {"p,u,i,i,u", "{}_<groupId={}>", tunnel + "_<subTunnelId=4294967295>_<epoch=31>_<groupId=254>",
          tunnel + "_<subTunnelId=ffffffff>_<epoch=1f>_<groupId=fe>"});
   check(lspRequestConfigId, "RsvpLerLspRequestConfigId",
         {"p,u,i,i,u,i", "{}_<configId={}>",
          tunnel + "_<subTunnelId=4294967295>_<epoch=31>_<groupId=254>_<configId=16>",
          tunnel + "_<subTunnelId=ffffffff>_<epoch=1f>_<groupId=fe>_<configId=10>"});
}

template<class Key>
std::string traced(Key const& key) {
   Twine::Text text;
   TraceFormat<Key>::put(text, key);
   return text.text();
}

TEST(KeyFormats, areTheTextFormsOfTheKeys) {
   auto const same = [](auto const& key) { EXPECT_EQ(traced(key), streamed(key)); };
   for (std::string_view const name : {"", "tun1", "{}", "a{b}c{x}"}) {
      same(Tests::tunnelId(name));
      same(Tests::pathSpecId(name));
      same(Tests::subTunnelId(name, 2));
      same(Tests::mbbId(name, 3, 4));
      same(Tests::groupId(name, 1, 3, 4));
      same(Tests::requestId(name, 5, 1, 3, 4));
   }
   same(RsvpLerTunnelSpecId());
   same(RsvpLerLspRequestConfigId());
}

} // namespace
