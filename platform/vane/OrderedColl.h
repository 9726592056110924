#pragma once

#include "brindle/Assert.h"
#include "vane/Epoch.h"
#include "vane/Key.h"
#include "vane/Outline.h"
#include "vane/Stored.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>

namespace Vane {

// A collection with unique keys in ascending order of their operator<=>, for one writer and any number of
// readers at once; NoValue as the value makes a set. Readers never wait; they get copies, but from what is told to show
// its object in place. A key that is present while a lookup or a walk runs is found by it.
//
// It is a skip list: the elements form a chain at the lowest level, and about a quarter of each level's
// elements stand in the next one too. An element that was taken out keeps its links, so a reader that stands
// on it finds on.
//
// No reader may be in a collection that is destroyed. Writer operations that run out of memory throw std::bad_alloc and
// leave the collection as it was, but for Vane::retire, by which they give up what they replace.
template<class Key, class Value>
class OrderedColl {
   struct Element;
   using Link = std::atomic<Element*>;
   using Object = typename Stored<Value>::Object;

public:
   // A copy of an element.
   struct Item {
      Key key;
      [[no_unique_address]] Value value;
   };

   OrderedColl() noexcept = default;
   OrderedColl(OrderedColl const&) = delete;
   OrderedColl& operator=(OrderedColl const&) = delete;
   ~OrderedColl() { disposeChain(head_[0].load(std::memory_order_relaxed)); }

   // Readers.

   // Grows with each change, once before it and once after it, so it is odd while a change is under way.
   // Whoever reads the same even number twice knows that no element went in between.
   std::uint64_t version() const noexcept { return version_.load(); }
   // The number of keys at this moment.
   std::size_t size() const noexcept { return size_.load(std::memory_order_relaxed); }
   bool empty() const noexcept { return size() == 0; }

   // A copy of the key's value; a default value when the key is absent.
   Value find(Key const& key) const {
      Value value{};
      find(key, value);
      return value;
   }
   // Copies the key's value into `out`. Returns false, and leaves `out` alone, when the key is absent.
   bool find(Key const& key, Value& out) const {
      Pin const pin;
      Element const* const element = findElement(key);
      if (element != nullptr)
         out = element->value;
      return element != nullptr;
   }
   // Asks the memory for what a walk reads of the collection itself.
   void prefetch() const noexcept { __builtin_prefetch(&version_); }
   // Asks for the element of the smallest key, ahead of a lookup or a walk. Under a pin of the caller's.
   void prefetchFirst() const noexcept { prefetchElement(firstElement()); }
   // And then for the element behind it.
   void prefetchSecond() const noexcept {
      if (Element const* const element = firstElement())
         prefetchElement(element->links()[0].load(std::memory_order_acquire));
   }
   // What the key's handle points to, or its value in place; nullptr when the key is absent or the handle empty. It is
   // good as long as the collection, and a pin that the caller has taken before.
   Object* peek(Key const& key) const noexcept {
      Element const* const element = findElement(key);
      return element != nullptr ? Stored<Value>::peek(element->value) : nullptr;
   }
   bool contains(Key const& key) const noexcept {
      Pin const pin;
      return findElement(key) != nullptr;
   }
   // The element of the smallest key; none when the collection is empty.
   std::optional<Item> first() const {
      Pin const pin;
      return copyOf(firstElement());
   }
   // The element of the smallest key greater than `key`, which need not be present; none when there is no
   // such key.
   std::optional<Item> after(Key const& key) const {
      Pin const pin;
      return copyOf(elementAfter(key));
   }

   // Calls body(key, object) for each element that Vane::orderedWalk would show, with what its handle points to, or
   // with its value; or body(key, object, outline) if the objects have an outline(), so that body needn't read the
   // object for it. All are good as long as the collection, and a pin that the caller has taken before. An empty handle
   // ends the process, as it does wherever one is followed.
   template<class Body>
   void inspectAll(Body&& body) const {
      std::uint64_t known = version();
      Element const* element = firstElement();
      while (element != nullptr) {
         Object* const object = Stored<Value>::peek(element->value);
         BRINDLE_ASSERT(object);
         if constexpr (Impl::Outlined<Object>)
            body(element->key, *object, element->outline.get());
         else
            body(element->key, *object);
         std::uint64_t const now = version();
         element = now == known ? element->links()[0].load(std::memory_order_acquire) : elementAfter(element->key);
         known = now;
      }
   }

   // The writer.

   // Inserts the key or replaces its value. Returns whether the key was absent. Keys that come in ascending
   // order are appended without a comparison but one.
   bool set(Key key, Value value) {
      Links before;
      Element* const former = locate(key, before);
      unsigned const height = former != nullptr ? former->height : nextHeight();
      Element* const element = makeElement(std::move(key), std::move(value), height);
      for (unsigned level = 0; level < height; ++level) {
         Link const* const links = former != nullptr ? former->links() : before[level];
         element->links()[level].store(links[level].load(std::memory_order_relaxed), std::memory_order_relaxed);
      }
      beginChange();
      // Lowest level first: this is where the key is or isn't.
      for (unsigned level = 0; level < height; ++level)
         before[level][level].store(element, std::memory_order_release);
      endChange();
      if (element->links()[0].load(std::memory_order_relaxed) == nullptr)
         last_ = element;
      if (former != nullptr)
         retireElement(former);
      else
         size_.store(size() + 1, std::memory_order_relaxed);
      return former == nullptr;
   }

   // Returns whether the key was there.
   bool erase(Key const& key) noexcept {
      Links before;
      Element* const element = locate(key, before);
      if (element == nullptr)
         return false;
      beginChange();
      for (unsigned level = element->height; level-- > 0;)
         before[level][level].store(element->links()[level].load(std::memory_order_relaxed), std::memory_order_release);
      endChange();
      if (element == last_)
         last_ = before[0] == head_.data() ? nullptr : Element::ofLinks(before[0]);
      size_.store(size() - 1, std::memory_order_relaxed);
      retireElement(element);
      return true;
   }

   void clear() noexcept {
      Element* const chain = head_[0].load(std::memory_order_relaxed);
      if (chain == nullptr)
         return;
      beginChange();
      for (unsigned level = maxHeight; level-- > 0;)
         head_[level].store(nullptr, std::memory_order_release);
      endChange();
      last_ = nullptr;
      size_.store(0, std::memory_order_relaxed);
      retire(chain, [](void const* dead) noexcept { disposeChain(static_cast<Element const*>(dead)); });
   }

private:
   static constexpr unsigned maxHeight = 6;

   // The links of the element follow it, one for each level it stands in.
   struct alignas(Link) Element {
      Element(Key k, Value v, unsigned levels)
            : key(std::move(k)), height(static_cast<std::uint8_t>(levels)), outline(Stored<Value>::peek(v)),
              value(std::move(v)) {}

      Link* links() noexcept { return reinterpret_cast<Link*>(this + 1); }
      Link const* links() const noexcept { return reinterpret_cast<Link const*>(this + 1); }
      static Element* ofLinks(Link* links) noexcept { return reinterpret_cast<Element*>(links) - 1; }

      [[no_unique_address]] Key const key;
      std::uint8_t const height;
      [[no_unique_address]] Impl::KeptOutline<Object> const outline;
      [[no_unique_address]] Value const value;
   };
   // The links that a key's place stands behind, for each level those of the last smaller element or of the
   // head.
   using Links = std::array<Link*, maxHeight>;

   static std::optional<Item> copyOf(Element const* element) {
      if (element == nullptr)
         return std::nullopt;
      return Item{element->key, element->value};
   }

   static void prefetchElement(Element const* element) noexcept {
      if (element == nullptr)
         return;
      __builtin_prefetch(&element->key);
      __builtin_prefetch(element->links());
   }

   Element const* firstElement() const noexcept { return head_[0].load(std::memory_order_acquire); }

   // Goes down to the lowest level even when it meets the key above: what stands there is what counts.
   Element const* findElement(Key const& key) const noexcept {
      Link const* links = head_.data();
      Element const* stop = nullptr;
      bool equal = false;
      for (unsigned level = maxHeight; level-- > 0;) {
         for (;;) {
            Element const* const next = links[level].load(std::memory_order_acquire);
            if (next == stop)
               break;
            bool const hit = next != nullptr && keysEqual(next->key, key);
            if (next == nullptr || hit || key < next->key) {
               stop = next;
               equal = hit;
               break;
            }
            links = next->links();
         }
      }
      return equal ? stop : nullptr;
   }

   Element const* elementAfter(Key const& key) const noexcept {
      Link const* links = head_.data();
      Element const* stop = nullptr;
      for (unsigned level = maxHeight; level-- > 0;) {
         for (;;) {
            Element const* const next = links[level].load(std::memory_order_acquire);
            if (next == stop)
               break;
            if (next == nullptr || key < next->key) {
               stop = next;
               break;
            }
            links = next->links();
         }
      }
      return stop;
   }

   // The writer's: fills `before` with the place of the key and returns its element, or nullptr.
   Element* locate(Key const& key, Links& before) noexcept {
      bool const append = last_ != nullptr && last_->key < key;
      Link* links = head_.data();
      Element* next = nullptr;
      for (unsigned level = maxHeight; level-- > 0;) {
         next = links[level].load(std::memory_order_relaxed);
         while (next != nullptr && (append || next->key < key)) {
            links = next->links();
            next = links[level].load(std::memory_order_relaxed);
         }
         before[level] = links;
      }
      return next != nullptr && keysEqual(next->key, key) ? next : nullptr;
   }

   // Repeatable from run to run: a quarter of the elements is higher than 1, a quarter of those higher
   // than 2...
   unsigned nextHeight() const noexcept {
      std::uint32_t const random = mixHash(version_.load(std::memory_order_relaxed) + 1);
      unsigned const twos = static_cast<unsigned>(std::countr_zero(random | std::uint32_t(1) << 30));
      return std::min(1 + twos / 2, maxHeight);
   }

   // A walk that began in the middle of a change has to see another number before what the change takes out
   // is freed. So that is retired behind endChange.
   void beginChange() noexcept { version_.store(version_.load(std::memory_order_relaxed) + 1); }
   void endChange() noexcept { version_.store(version_.load(std::memory_order_relaxed) + 1); }

   static Element* makeElement(Key key, Value value, unsigned height) {
      void* const storage = ::operator new(sizeof(Element) + height * sizeof(Link));
      auto* const element = new (storage) Element(std::move(key), std::move(value), height);
      std::uninitialized_default_construct_n(element->links(), height);
      return element;
   }
   static void disposeElement(Element const* element) noexcept {
      element->~Element();
      ::operator delete(const_cast<Element*>(element));
   }
   static void disposeChain(Element const* element) noexcept {
      while (element != nullptr)
         disposeElement(std::exchange(element, element->links()[0].load(std::memory_order_relaxed)));
   }
   static void retireElement(Element const* element) noexcept {
      retire(element, [](void const* dead) noexcept { disposeElement(static_cast<Element const*>(dead)); });
   }

   template<class K, class V, class Body>
   friend void orderedWalk(OrderedColl<K, V> const& coll, Body&& body);

   static_assert(std::is_nothrow_move_constructible_v<Key> && std::is_nothrow_move_constructible_v<Value>);
   static_assert(alignof(Element) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

   // First what a walk reads, and then what a lookup reads too: in two cache lines, wherever the collection lies.
   std::atomic<std::uint64_t> version_ = 0;
   std::array<Link, maxHeight> head_{};
   std::atomic<std::size_t> size_ = 0;
   Element* last_ = nullptr; // the writer's: the element of the greatest key
};

// The walk of every ordered collection: calls body(key, value) in ascending order of the keys. The body gets
// copies and runs without a pin of the walk, so it may wait, and it may change the collection. When the
// version is what it was before the body, the walk goes to the successor of the element; else to the smallest
// key above the one just handled. A body that returns false ends the walk.
template<class Key, class Value, class Body>
void orderedWalk(OrderedColl<Key, Value> const& coll, Body&& body) {
   using Coll = OrderedColl<Key, Value>;
   typename Coll::Element const* element = nullptr;
   std::optional<typename Coll::Item> item;
   std::uint64_t known = 0;
   for (;;) {
      {
         // The pin comes first: while the version under it is the known one, the element hasn't been retired.
         Pin const pin;
         std::uint64_t const version = coll.version();
         if (!item)
            element = coll.firstElement();
         else if (version == known)
            element = element->links()[0].load(std::memory_order_acquire);
         else
            element = coll.elementAfter(item->key);
         known = version;
         if (element == nullptr)
            return;
         item.emplace(typename Coll::Item{element->key, element->value});
      }
      if (!goesOn(body, item->key, item->value))
         return;
   }
}

} // namespace Vane
