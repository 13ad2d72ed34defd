#include "address/SortedList.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/Text.h"

namespace {

// Large enough that the list of chunks stays short, small enough that to insert into one costs nothing.
constexpr size_t ChunkItems = 256;

using Chunk = std::vector<SortedList::Item>;

bool KeyBefore(std::string_view key, const SortedList::Item& item) { return key < item.Key; }
bool StartsBefore(std::string_view key, const Chunk& chunk) { return KeyBefore(key, chunk.front()); }

}  // namespace

void SortedList::Add(const std::string& text) {
  Item item{text, Text::UpperCase(text)};
  ++size_;
  // What comes in order, as from a file, only ever fills the last chunk.
  if (chunks_.empty() || (chunks_.back().size() == ChunkItems && chunks_.back().back().Key <= item.Key)) {
    chunks_.emplace_back().reserve(ChunkItems);
    chunks_.back().push_back(std::move(item));
    return;
  }
  auto chunk = std::upper_bound(chunks_.begin(), chunks_.end(), item.Key, StartsBefore);
  if (chunk != chunks_.begin()) --chunk;
  chunk->insert(std::upper_bound(chunk->begin(), chunk->end(), item.Key, KeyBefore), std::move(item));
  if (chunk->size() <= ChunkItems) return;
  const auto middle = chunk->begin() + ChunkItems / 2;
  Chunk behind(std::make_move_iterator(middle), std::make_move_iterator(chunk->end()));
  chunk->erase(middle, chunk->end());
  chunks_.insert(chunk + 1, std::move(behind));
}

void SortedList::Clear() {
  chunks_.clear();
  size_ = 0;
}

const std::string& SortedList::operator[](size_t index) const {
  auto chunk = chunks_.begin();
  for (; index >= chunk->size(); ++chunk) index -= chunk->size();
  return (*chunk)[index].Text;
}

size_t SortedList::IndexOf(const std::string& text) const {
  const std::string key = Text::UpperCase(text);
  size_t index = 0;
  for (const Chunk& chunk : chunks_) {
    if (chunk.back().Key < key) {
      index += chunk.size();
      continue;
    }
    const auto before = [](const Item& item, std::string_view wanted) { return item.Key < wanted; };
    return index +
           static_cast<size_t>(std::lower_bound(chunk.begin(), chunk.end(), key, before) - chunk.begin());
  }
  return index;
}
