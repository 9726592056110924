#include "brindle/Node.h"

#include "brindle/Ptr.h"

#include <gtest/gtest.h>

using namespace Brindle;

namespace {

struct Kept : Node {
   void lastUserGone() const noexcept override { hasUsers = false; }
   mutable bool hasUsers = true;
};

} // namespace

TEST(Node, belongsToWhoeverMadeIt) {
   auto const node = makeNode<Node>();
   EXPECT_EQ(node->userCount(), 1u);
   {
      Ptr<Node> const second = node;
      EXPECT_EQ(node->userCount(), 2u);
   }
   EXPECT_EQ(node->userCount(), 1u);
}

TEST(Node, aClassMayKeepItsObjectBehindTheLastUser) {
   Kept kept;
   kept.addUser();
   kept.dropUser();
   EXPECT_TRUE(kept.hasUsers);
   kept.dropUser();
   EXPECT_FALSE(kept.hasUsers);
}

TEST(Node, isNeitherPublishedNorPartOfTheTypeSystem) {
   auto const node = makeNode<Node>();
   EXPECT_EQ(node->publisher(), nullptr);
   EXPECT_EQ(node->typeData(), nullptr);
}
