#include "tests/properties/DamagedStates.h"
#include "tests/properties/Views.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

// The order in which an agent has written its rows, and in which they stand in a set, makes no difference.

using namespace Tests;

namespace {

using State = nlohmann::ordered_json;

template<class Values>
void shuffleValues(Values& values, Random& random) {
   for (std::size_t i = values.size(); i > 1; --i)
      std::swap(values[i - 1], values[random.below(static_cast<std::uint32_t>(i))]);
}

State shuffled(State const& value, Random& random);

State shuffledObject(State const& object, Random& random) {
   std::vector<std::string> names;
   for (auto const& [name, inside] : object.items())
      names.push_back(name);
   shuffleValues(names, random);
   State result = State::object();
   for (std::string const& name : names)
      // A path is a sequence; every other list of a state is a table, a set or a map.
      result[name] = name == "hops" ? object[name] : shuffled(object[name], random);
   return result;
}

State shuffledList(State const& list, Random& random) {
   State result = State::array();
   for (State const& inside : list)
      result.push_back(shuffled(inside, random));
   shuffleValues(result, random);
   return result;
}

State shuffled(State const& value, Random& random) {
   if (value.is_object())
      return shuffledObject(value, random);
   return value.is_array() ? shuffledList(value, random) : value;
}

TEST(Order, ofInsertionNeverChangesAByte) {
   std::uint32_t moved = 0;
   forEachState([&](DamagedState const& state) {
      Random random(static_cast<std::uint32_t>(state.seed));
      std::string const text = shuffled(State::parse(state.text), random).dump();
      moved += text + '\n' != state.text ? 1 : 0;
      Host::RouterState const other = loaded(text);
      for (Form const form : forms) {
         for (View const& view : tunnelViews)
            EXPECT_EQ(answer(*tunnelCommand(other), view, form), answer(*tunnelCommand(state.router), view, form))
                  << view.name;
         EXPECT_EQ(answer(*statusCommand(other), form), answer(*statusCommand(state.router), form));
      }
   });
   EXPECT_EQ(moved, stateCount());
}

} // namespace
