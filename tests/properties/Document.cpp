#include "tests/properties/Document.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace Tests {

namespace {

// Builds the tree out of the parser's events.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
public:
   Json root;

   bool null() override { return fail("a null"); }
   bool boolean(bool value) override {
      Json& json = put(Json::Kind::flag);
      json.flag = value;
      return true;
   }
   bool number_integer(number_integer_t) override { return fail("a negative number"); }
   bool number_unsigned(number_unsigned_t value) override {
      put(Json::Kind::whole).whole = value;
      return true;
   }
   bool number_float(number_float_t value, string_t const&) override {
      put(Json::Kind::real).real = value;
      return true;
   }
   bool string(string_t& value) override {
      put(Json::Kind::text).text = value;
      return true;
   }
   bool binary(binary_t&) override { return fail("binary data"); }
   bool start_object(std::size_t) override { return open(Json::Kind::object); }
   bool key(string_t& name) override {
      open_.back()->members.push_back({name, Json()});
      return true;
   }
   bool end_object() override { return close(); }
   bool start_array(std::size_t) override { return open(Json::Kind::list); }
   bool end_array() override { return close(); }
   bool parse_error(std::size_t position, std::string const&, nlohmann::detail::exception const& error) override {
      throw std::runtime_error("at byte " + std::to_string(position) + ": " + error.what());
   }

private:
   [[noreturn]] static bool fail(char const* what) { throw std::runtime_error(std::string("holds ") + what); }

   // A value grows only while it is the innermost open one, so the addresses of those around it stay.
   Json& put(Json::Kind kind) {
      Json* place = &root;
      if (!open_.empty() && open_.back()->kind == Json::Kind::object)
         place = &open_.back()->members.back().value;
      else if (!open_.empty())
         place = &open_.back()->elements.emplace_back();
      place->kind = kind;
      return *place;
   }
   bool open(Json::Kind kind) {
      open_.push_back(&put(kind));
      return true;
   }
   bool close() {
      open_.pop_back();
      return true;
   }

   std::vector<Json*> open_;
};

bool mayRepeat(std::string_view object) {
   return object == "tunnels" || object == "intfMtus" || object == "treeLeaves" || object == "tree";
}

std::string joined(std::string const& path, std::string const& name) {
   return path.empty() ? name : path + '.' + name;
}

std::string repeatedIn(Json const& json, std::string const& path, std::string_view name) {
   std::set<std::string_view> names;
   std::string found;
   for (auto const& [member, value] : json.members) {
      if (!names.insert(member).second && !mayRepeat(name))
         return joined(path, member);
      found = repeatedIn(value, joined(path, member), member);
      if (!found.empty())
         return found;
   }
   for (Json const& element : json.elements) {
      found = repeatedIn(element, path + "[]", "");
      if (!found.empty())
         return found;
   }
   return found;
}

} // namespace

Json const* Json::find(std::string_view name) const noexcept {
   auto const found = std::ranges::find(members, name, &Member::name);
   return found == members.end() ? nullptr : &found->value;
}

Json parsed(std::string_view document) {
   Builder builder;
   nlohmann::json::sax_parse(document, &builder);
   return std::move(builder.root);
}

std::string repeatedMember(Json const& document) {
   return repeatedIn(document, "", "");
}

} // namespace Tests
