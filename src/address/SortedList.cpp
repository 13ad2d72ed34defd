#include "address/SortedList.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/Text.h"

namespace {

// Large enough that there are few chunks, small enough that an insertion into one costs next to nothing.
constexpr size_t ChunkItems = 256;

// The number of a chunk's keys for which `before` holds: the first ones.
template <class Chunk, class Before>
size_t CountWhile(const Chunk& chunk, Before before) {
  size_t least = 0, most = chunk.Size();
  while (least < most) {
    const size_t middle = (least + most) / 2;
    if (before(chunk.Key(middle)))
      least = middle + 1;
    else
      most = middle;
  }
  return least;
}

}  // namespace

void SortedList::Chunk::Insert(size_t i, const std::string& text, std::string_view key) {
  const size_t start = Start(i);
  texts_.insert(texts_.begin() + static_cast<std::ptrdiff_t>(i), text);
  keys_.insert(start, key);
  const auto end = ends_.insert(ends_.begin() + static_cast<std::ptrdiff_t>(i), start);
  std::for_each(end, ends_.end(), [&key](size_t& behind) { behind += key.size(); });
}

SortedList::Chunk SortedList::Chunk::SplitOff(size_t i) {
  const size_t start = Start(i);
  const auto from = static_cast<std::ptrdiff_t>(i);
  Chunk behind;
  behind.texts_.assign(std::make_move_iterator(texts_.begin() + from), std::make_move_iterator(texts_.end()));
  behind.keys_ = keys_.substr(start);
  for (size_t k = i; k < ends_.size(); ++k) behind.ends_.push_back(ends_[k] - start);
  texts_.resize(i);
  keys_.resize(start);
  ends_.resize(i);
  return behind;
}

void SortedList::Add(const std::string& text) {
  const std::string key = Text::UpperCase(text);
  ++size_;
  // What comes in order, as from a file, only ever fills the last chunk.
  const bool last = chunks_.empty() || chunks_.back().LastKey() <= key;
  if (last) {
    if (chunks_.empty() || chunks_.back().Size() == ChunkItems) chunks_.emplace_back();
    chunks_.back().Insert(chunks_.back().Size(), text, key);
    return;
  }
  const auto chunk = std::partition_point(chunks_.begin(), chunks_.end(),
                                          [&](const Chunk& c) { return c.LastKey() <= key; });
  chunk->Insert(CountWhile(*chunk, [&](std::string_view k) { return k <= key; }), text, key);
  if (chunk->Size() <= ChunkItems) return;
  Chunk behind = chunk->SplitOff(ChunkItems / 2);
  chunks_.insert(chunk + 1, std::move(behind));
}

void SortedList::Clear() {
  chunks_.clear();
  size_ = 0;
}

const std::string& SortedList::operator[](size_t index) const {
  auto chunk = chunks_.begin();
  for (; index >= chunk->Size(); ++chunk) index -= chunk->Size();
  return chunk->Text(index);
}

size_t SortedList::IndexOf(const std::string& text) const {
  const std::string key = Text::UpperCase(text);
  size_t index = 0;
  for (const Chunk& chunk : chunks_) {
    if (chunk.LastKey() >= key) return index + CountWhile(chunk, [&](std::string_view k) { return k < key; });
    index += chunk.Size();
  }
  return index;
}
