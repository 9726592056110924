#include "brindle/ValueText.h"

#include "brindle/Exception.h"

#include <gtest/gtest.h>

using namespace Brindle;

namespace {

String form(GenericValue const& value) {
   String text;
   appendAttribute(text, "a", value);
   return text;
}

String failure(auto&& action) {
   try {
      action();
      return "";
   } catch (Exception const& error) {
      return error.what();
   }
}

} // namespace

TEST(ValueText, formsOfAnAttribute) {
   struct {
      GenericValue value;
      char const* form;
   } const rows[] = {
         {String(""), "<a=''>"},
         {String("it's \\ here"), "<a='it\\'s \\\\ here'>"},
         {true, "<a=1>"},
         {false, "<a=0>"},
         {std::uint8_t{255}, "<a=255>"},
         {std::uint16_t{65535}, "<a=65535>"},
         {std::uint32_t{4294967295}, "<a=4294967295>"},
         {std::uint64_t{18446744073709551615u}, "<a=18446744073709551615>"},
   };
   for (auto const& row : rows)
      EXPECT_EQ(form(row.value), row.form);
}

TEST(ValueText, attributesAreJoined) {
   String text;
   appendAttribute(text, "name", String("t"));
   appendAttribute(text, "number", std::uint32_t{7});
   EXPECT_EQ(text, "<name='t'>_<number=7>");
}

TEST(ValueText, aValueOfNoTextForm) {
   EXPECT_EQ(failure([] { form(GenericValue()); }), "the attribute a has no text form");
   EXPECT_EQ(failure([] { form(makeNode<Node>()); }), "the attribute a has no text form");
}

TEST(ValueText, readsWhatItWrites) {
   for (String const written : {"", "t", "it's", "a\\b", "'", "\\"}) {
      String const text = form(written);
      Vane::CharRange range{std::string_view(text)};
      EXPECT_EQ(readTextAttribute(range, "a"), written);
      requireConsumed(range);
   }
}

TEST(ValueText, whatCanNotBeRead) {
   struct {
      char const* text;
      char const* failure;
   } const rows[] = {
         {"", "expected <a='...'> at character 1"},
         {"<b='t'>", "expected <a='...'> at character 2"},
         {"<a=1>", "expected <a='...'> at character 3"},
         {"<a='t", "the text ends before its closing quote at character 6"},
         {"<a='t\\", "the text ends before its closing quote at character 7"},
         {"<a='t\\u'>", "a backslash stands before a character that needs none at character 7"},
         {"<a='t'", "expected > behind a at character 7"},
         {"<a='t'>_", "unexpected text behind the value at character 8"},
   };
   for (auto const& row : rows)
      EXPECT_EQ(failure([&] {
                   Vane::CharRange range{std::string_view(row.text)};
                   readTextAttribute(range, "a");
                   requireConsumed(range);
                }),
                row.failure);
}
