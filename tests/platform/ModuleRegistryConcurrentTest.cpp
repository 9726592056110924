#include "tests/platform/SyntheticModule.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace Brindle;
using Tests::SyntheticModule;

TEST(ModuleRegistryConcurrent, lookupsWhileModulesComeAndGo) {
   SyntheticModule const stays("Stays", "S::First", "S::Second");
   SyntheticModule const comes("Comes", "C::First", "C::Second");
   ModuleRegistration const registration(stays.data);
   std::atomic<bool> done = false;
   std::atomic<int> wrong = 0;
   std::atomic<int> lookups = 0;
   std::vector<std::thread> readers;
   for (int i = 0; i < 3; ++i) {
      readers.emplace_back([&] {
         while (!done) {
            TypeData const* const other = ModuleInspectData::findType("C::Second");
            if (ModuleInspectData::findType("S::Second") != &stays.types[1] ||
                ModuleInspectData::findModule("Stays") != &stays.data || (other != nullptr && other != &comes.types[1]))
               ++wrong;
            ++lookups;
         }
      });
   }
   for (int round = 0; round < 2000 || lookups < 20000; ++round)
      ModuleRegistration const coming(comes.data);
   done = true;
   for (std::thread& reader : readers)
      reader.join();
   EXPECT_EQ(wrong, 0);
   EXPECT_EQ(ModuleInspectData::findType("C::Second"), nullptr);
}
