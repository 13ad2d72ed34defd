#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

// Texts in ascending order without regard to case, whatever the order of insertion; texts that differ in case
// only stand in the order in which they came.
//
// Kept in chunks, so that an insertion moves few texts. The keys of a chunk lie one behind the other in
// memory: a pass over all keys of a long list takes as long as reading that memory does.
class SortedList {
 private:
  class Chunk {
   public:
    size_t Size() const { return texts_.size(); }
    const std::string& Text(size_t i) const { return texts_[i]; }
    std::string_view Key(size_t i) const {
      return std::string_view(keys_).substr(Start(i), ends_[i] - Start(i));
    }
    std::string_view LastKey() const { return Key(Size() - 1); }
    void Insert(size_t i, const std::string& text, std::string_view key);
    // Takes the items from a place on off the chunk.
    Chunk SplitOff(size_t i);

   private:
    size_t Start(size_t i) const { return i == 0 ? 0 : ends_[i - 1]; }

    std::vector<std::string> texts_;
    std::string keys_;
    std::vector<size_t> ends_;  // of each key in `keys_`
  };

 public:
  struct Item {
    const std::string& Text;
    std::string_view Key;  // the text in upper case, which decides the order
  };

  class Iterator {
   public:
    using value_type = Item;
    using reference = Item;
    using pointer = void;
    using difference_type = std::ptrdiff_t;
    using iterator_category = std::input_iterator_tag;

    explicit Iterator(const Chunk* chunk) : chunk_(chunk) {}
    Item operator*() const { return {chunk_->Text(at_), chunk_->Key(at_)}; }
    Iterator& operator++() {
      if (++at_ < chunk_->Size()) return *this;
      ++chunk_;
      at_ = 0;
      return *this;
    }
    bool operator==(const Iterator&) const = default;

   private:
    const Chunk* chunk_;
    size_t at_ = 0;
  };

  void Add(const std::string& text);
  void Clear();

  size_t Size() const { return size_; }
  // `index` is below Size().
  const std::string& operator[](size_t index) const;
  // The index of the first item that doesn't sort before a text; Size() where all do.
  size_t IndexOf(const std::string& text) const;

  Iterator begin() const { return Iterator(chunks_.data()); }
  Iterator end() const { return Iterator(chunks_.data() + chunks_.size()); }

 private:
  std::vector<Chunk> chunks_;  // none of them empty
  size_t size_ = 0;
};
