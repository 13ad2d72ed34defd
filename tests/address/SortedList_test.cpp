#include "address/SortedList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace {

std::vector<std::string> Texts(const SortedList& list) {
  std::vector<std::string> texts;
  for (const SortedList::Item& item : list) texts.push_back(item.Text);
  return texts;
}

TEST(SortedList, OrdersWithoutCaseAndKeepsEqualsAsTheyCame) {
  SortedList list;
  for (const char* text : {"b", "Ärger", "A_b", "", "äpfel", "aZ", "ÄPFEL", "B", "b", "Äpfel"})
    list.Add(text);
  EXPECT_EQ(Texts(list),
            (std::vector<std::string>{"", "aZ", "A_b", "b", "B", "b", "äpfel", "ÄPFEL", "Äpfel", "Ärger"}));
  EXPECT_EQ(list[1], "aZ");
  EXPECT_EQ(list.IndexOf("a_B"), 2U);
  EXPECT_EQ(list.IndexOf("B"), 3U);
  EXPECT_EQ(list.IndexOf("zebra"), 6U);
  EXPECT_EQ(list.IndexOf("ärgerlich"), 10U);
  list.Clear();
  EXPECT_EQ(list.Size(), 0U);
  EXPECT_TRUE(list.begin() == list.end());
}

// Many more than a chunk holds, in order, in reverse, and mixed with duplicates across the chunks' edges.
TEST(SortedList, StaysInOrderAcrossChunks) {
  constexpr size_t Count = 3000;
  std::vector<std::string> wanted;
  for (size_t i = 0; i < Count; ++i) wanted.push_back((i % 2 ? "Site" : "site") + std::to_string(i / 5));
  std::vector<std::vector<std::string>> orders(3, wanted);
  const auto before = [](const std::string& a, const std::string& b) {
    return Text::UpperCase(a) < Text::UpperCase(b);
  };
  std::stable_sort(orders[0].begin(), orders[0].end(), before);
  std::reverse(orders[1].begin(), orders[1].end());
  std::shuffle(orders[2].begin(), orders[2].end(), std::mt19937(1));
  for (std::vector<std::string>& order : orders) {
    SortedList list;
    for (const std::string& text : order) list.Add(text);
    std::stable_sort(order.begin(), order.end(), before);
    ASSERT_EQ(Texts(list), order);
    for (size_t i = 0; i < Count; i += 97) {
      EXPECT_EQ(list[i], order[i]);
      const auto place = std::lower_bound(order.begin(), order.end(), order[i], before);
      EXPECT_EQ(list.IndexOf(order[i]), static_cast<size_t>(place - order.begin()));
    }
  }
}

}  // namespace
