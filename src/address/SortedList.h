#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

// Texts in ascending order without regard to case, whatever the order of insertion; texts that differ in case
// only stand in the order in which they came. Kept in chunks, so that an insertion moves few of them.
class SortedList {
 public:
  struct Item {
    std::string Text;
    std::string Key;  // in upper case: what decides the order
  };

  class Iterator {
   public:
    using value_type = Item;
    using difference_type = std::ptrdiff_t;

    Iterator() = default;
    Iterator(const std::vector<std::vector<Item>>& chunks, size_t chunk) : chunks_(&chunks), chunk_(chunk) {}
    const Item& operator*() const { return (*chunks_)[chunk_][at_]; }
    Iterator& operator++() {
      if (++at_ < (*chunks_)[chunk_].size()) return *this;
      ++chunk_;
      at_ = 0;
      return *this;
    }
    Iterator operator++(int) {
      const Iterator here = *this;
      ++*this;
      return here;
    }
    bool operator==(const Iterator& other) const { return chunk_ == other.chunk_ && at_ == other.at_; }

   private:
    const std::vector<std::vector<Item>>* chunks_ = nullptr;
    size_t chunk_ = 0, at_ = 0;
  };

  void Add(const std::string& text);
  void Clear();

  size_t Size() const { return size_; }
  // `index` is below Size().
  const std::string& operator[](size_t index) const;
  // The index of the first item that doesn't sort before a text; Size() where all do.
  size_t IndexOf(const std::string& text) const;

  Iterator begin() const { return {chunks_, 0}; }
  Iterator end() const { return {chunks_, chunks_.size()}; }

 private:
  std::vector<std::vector<Item>> chunks_;  // none of them empty
  size_t size_ = 0;
};
