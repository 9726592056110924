#pragma once

#include "RsvpLer/output/FixedPoint.h"
#include "brindle/Duration.h"
#include "lattice/Address.h"

#include <fmt/compile.h>
#include <fmt/format.h>
#include <json-c/json.h>
#include <nlohmann/json.hpp>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// The libraries that the renderer is measured against, behind the operations of scrivo::RendererV2. None has a form for
// an address or a duration, so each is given the text that the renderer itself writes.

namespace Bench {

// The text of a value that the libraries have no type for.
class ValueText {
public:
   explicit ValueText(Lattice::IpGenAddr const& address) : size_(address.printToBuffer(bytes_, sizeof bytes_)) {}
   explicit ValueText(Brindle::Duration duration)
         : size_(static_cast<std::size_t>(Kerf::putFixedPoint(bytes_, duration.seconds()) - bytes_)) {
      bytes_[size_] = '\0';
   }
   std::string_view view() const { return {bytes_, size_}; }
   char const* c_str() const { return bytes_; }

private:
   char bytes_[Kerf::maxFixedPointLength + 1];
   std::size_t size_;
};

template<class T>
constexpr bool isAddress = std::is_same_v<T, Lattice::IpGenAddr>;
template<class T>
constexpr bool isDuration = std::is_same_v<T, Brindle::Duration>;
template<class T>
constexpr bool isString = std::is_same_v<T, std::string_view>;

class RapidJsonPeer {
public:
   void startJsonDict(std::string_view key) {
      addKey(key);
      writer_.StartObject();
   }
   void startJsonDict() { writer_.StartObject(); }
   void startJsonList(std::string_view key) {
      addKey(key);
      writer_.StartArray();
   }
   void endJsonDict() { writer_.EndObject(); }
   void endJsonList() { writer_.EndArray(); }
   template<class T>
   void addJsonKeyValuePair(std::string_view key, T const& value) {
      if (!key.empty())
         addKey(key);
      if constexpr (isAddress<T>) {
         addString(ValueText(value).view());
      } else if constexpr (isDuration<T>) {
         ValueText const text(value);
         writer_.RawValue(text.c_str(), text.view().size(), rapidjson::kNumberType);
      } else if constexpr (isString<T>) {
         addString(value);
      } else if constexpr (std::is_same_v<T, bool>) {
         writer_.Bool(value);
      } else if constexpr (sizeof(T) == 8) {
         writer_.Uint64(value);
      } else {
         writer_.Uint(value);
      }
   }

   void clear() {
      buffer_.Clear();
      writer_.Reset(buffer_);
   }
   std::string_view text() const { return {buffer_.GetString(), buffer_.GetSize()}; }

private:
   void addKey(std::string_view key) { writer_.Key(key.data(), static_cast<rapidjson::SizeType>(key.size())); }
   void addString(std::string_view text) { writer_.String(text.data(), static_cast<rapidjson::SizeType>(text.size())); }

   rapidjson::StringBuffer buffer_;
   rapidjson::Writer<rapidjson::StringBuffer> writer_{buffer_};
};

// A tree of the whole document, and then its text.
class JsonCPeer {
public:
   JsonCPeer() = default;
   JsonCPeer(JsonCPeer const&) = delete;
   JsonCPeer& operator=(JsonCPeer const&) = delete;
   ~JsonCPeer() { json_object_put(root_); }

   template<class Key>
   void startJsonDict(Key const& key) {
      open(key, json_object_new_object());
   }
   void startJsonDict() { open("", json_object_new_object()); }
   template<class Key>
   void startJsonList(Key const& key) {
      open(key, json_object_new_array());
   }
   void endJsonDict() { open_.pop_back(); }
   void endJsonList() { open_.pop_back(); }
   template<class Key, class T>
   void addJsonKeyValuePair(Key const& key, T const& value) {
      if constexpr (isAddress<T>) {
         std::string_view const text = ValueText(value).view();
         add(key, json_object_new_string_len(text.data(), static_cast<int>(text.size())));
      } else if constexpr (isDuration<T>) {
         add(key, json_object_new_double_s(value.seconds(), ValueText(value).c_str()));
      } else if constexpr (isString<T>) {
         add(key, json_object_new_string_len(value.data(), static_cast<int>(value.size())));
      } else if constexpr (std::is_same_v<T, bool>) {
         add(key, json_object_new_boolean(value));
      } else {
         add(key, json_object_new_uint64(value));
      }
   }

   void clear() {
      json_object_put(root_);
      root_ = nullptr;
   }
   std::string_view text() {
      std::size_t size = 0;
      char const* const text =
            json_object_to_json_string_length(root_, JSON_C_TO_STRING_PLAIN | JSON_C_TO_STRING_NOSLASHESCAPE, &size);
      return {text, size};
   }

private:
   template<class Key>
   void open(Key const& key, json_object* container) {
      if (root_ == nullptr)
         root_ = container;
      else
         add(key, container);
      open_.push_back(container);
   }
   // A literal needs no copy, and none of the keys comes twice.
   template<std::size_t size>
   void add(char const (&key)[size], json_object* value) {
      insert(key, value, JSON_C_OBJECT_ADD_KEY_IS_NEW | JSON_C_OBJECT_KEY_IS_CONSTANT);
   }
   void add(std::string_view key, json_object* value) {
      insert(std::string(key).c_str(), value, JSON_C_OBJECT_ADD_KEY_IS_NEW);
   }
   void insert(char const* key, json_object* value, unsigned options) {
      if (json_object_is_type(open_.back(), json_type_array))
         json_object_array_add(open_.back(), value);
      else
         json_object_object_add_ex(open_.back(), key, value, options);
   }

   json_object* root_ = nullptr;
   std::vector<json_object*> open_;
};

// A tree too. Its objects are sorted by key and its numbers have a form of their own, so the text differs.
class NlohmannPeer {
public:
   void startJsonDict(std::string_view key) { open(key, nlohmann::json::object()); }
   void startJsonDict() { open("", nlohmann::json::object()); }
   void startJsonList(std::string_view key) { open(key, nlohmann::json::array()); }
   void endJsonDict() { open_.pop_back(); }
   void endJsonList() { open_.pop_back(); }
   template<class T>
   void addJsonKeyValuePair(std::string_view key, T const& value) {
      if constexpr (isAddress<T>)
         add(key, ValueText(value).view());
      else if constexpr (isDuration<T>)
         add(key, value.seconds());
      else
         add(key, value);
   }

   void clear() { root_ = nullptr; }
   std::string text() const { return root_.dump(); }

private:
   void open(std::string_view key, nlohmann::json container) {
      if (open_.empty()) {
         root_ = std::move(container);
         open_.push_back(&root_);
      } else {
         open_.push_back(&add(key, std::move(container)));
      }
   }
   template<class T>
   nlohmann::json& add(std::string_view key, T&& value) {
      nlohmann::json& container = *open_.back();
      if (container.is_array())
         return container.emplace_back(std::forward<T>(value));
      return *container.emplace(std::string(key), std::forward<T>(value)).first;
   }

   nlohmann::json root_;
   std::vector<nlohmann::json*> open_;
};

// Format strings, compiled. Nothing is quoted: the texts of the document need no escape.
class FmtPeer {
public:
   template<class Key>
   void startJsonDict(Key const& key) {
      open(key, '{');
   }
   void startJsonDict() { open("", '{'); }
   template<class Key>
   void startJsonList(Key const& key) {
      open(key, '[');
   }
   void endJsonDict() { close('}'); }
   void endJsonList() { close(']'); }
   template<class T>
   void addJsonKeyValuePair(std::string_view key, T const& value) {
      addKey(key);
      if constexpr (isAddress<T>)
         put(FMT_COMPILE("\"{}\""), ValueText(value).view());
      else if constexpr (isDuration<T>)
         put(FMT_COMPILE("{:.6f}"), value.seconds());
      else if constexpr (isString<T>)
         put(FMT_COMPILE("\"{}\""), value);
      else
         put(FMT_COMPILE("{}"), value);
   }

   void clear() { buffer_.clear(); }
   std::string_view text() const { return {buffer_.data(), buffer_.size()}; }

private:
   template<class Format, class... Args>
   void put(Format const& format, Args const&... args) {
      fmt::format_to(std::back_inserter(buffer_), format, args...);
   }
   void addKey(std::string_view key) {
      if (!atStart_)
         buffer_.push_back(',');
      atStart_ = false;
      if (!key.empty())
         put(FMT_COMPILE("\"{}\":"), key);
   }
   void open(std::string_view key, char opener) {
      if (buffer_.size() != 0)
         addKey(key);
      buffer_.push_back(opener);
      atStart_ = true;
   }
   void close(char closer) {
      buffer_.push_back(closer);
      atStart_ = false;
   }

   fmt::memory_buffer buffer_;
   bool atStart_ = true;
};

} // namespace Bench
