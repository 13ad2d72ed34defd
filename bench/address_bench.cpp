// Completion that ends at the last of 100,000 addresses against a plain case-insensitive prefix compare over
// the same strings; and a hundred more addresses in that list against one such completion.

#include <strings.h>

#include <random>

#include "Bench.h"
#include "core/Program.h"
#include "core/frmMain.h"
#include "fakes/FakeDesktop.h"

namespace {

constexpr int Count = 100000, Additions = 100, Rounds = 51;
constexpr double CompletionBound = 1.5, FrameMicroseconds = 16000, AdditionsBound = 1;
constexpr int LetterKey = 'A';

std::string Address(const std::string& start, int number) {
  return start + std::to_string(number) + ".example.test/articles/" + std::to_string(number * 7) + ".html";
}

// A program with a full list.
class Bar {
 public:
  explicit Bar(const std::vector<std::string>& addresses) {
    for (const std::string& address : addresses) Room().AddItem(address);
  }
  AddressBar& Room() { return program_.main().address; }
  FakeComboBox& Combo1() { return static_cast<FakeComboBox&>(*Room().Combo1); }

 private:
  ProgramFolder folder_;
  FakeDesktop desktop_{folder_.path};
  Program program_{desktop_};
};

size_t PlainMatches(const std::vector<std::string>& strings, const std::string& typed) {
  size_t matches = 0;
  for (const std::string& text : strings)
    if (strncasecmp(text.c_str(), typed.c_str(), typed.size()) == 0) ++matches;
  return matches;
}

struct Case {
  const char* Name;
  const char* Start;  // of every address
  const char* Last;   // the one that sorts last
  const char* Typed;
  bool Shuffled;
};

void MeasureCompletion(Report& report, const Case& row) {
  std::vector<std::string> addresses;
  for (int i = 1; i < Count; ++i) addresses.push_back(Address(row.Start, Count + i));
  addresses.push_back(row.Last);
  if (row.Shuffled) std::shuffle(addresses.begin(), addresses.end(), std::mt19937(1));
  Bar bar(addresses);
  // As they lie in memory when they are read in this order.
  const std::vector<std::string> plain = addresses;
  size_t matches = 0;
  const auto times = Medians(Rounds, {[&] { matches += PlainMatches(plain, row.Typed); },
                                      [&] {
                                        bar.Combo1().text = row.Typed;
                                        bar.Combo1().KeyUp(LetterKey);
                                      }});
  if (bar.Combo1().text != row.Last || matches > Rounds + 1) std::abort();
  const std::string name = std::string("completion, ") + row.Name;
  report.Figure(name, times[1], "us");
  report.Ratio(name + ", against a plain pass", times[1] / times[0], CompletionBound);
  report.Ratio(name + ", against a frame", times[1] / FrameMicroseconds, 1);
}

void MeasureAddition(Report& report) {
  std::vector<std::string> addresses;
  for (int i = 0; i < Count; ++i) addresses.push_back(Address("http://www.site", Count + i));
  Bar bar(addresses);
  std::mt19937 random(2);
  std::vector<std::string> more;
  for (int i = 0; i < Additions * (Rounds + 1); ++i)
    more.push_back(Address("http://www.site", Count + static_cast<int>(random() % Count)));
  size_t next = 0;
  const auto times = Medians(Rounds, {[&] {
                                        bar.Combo1().text = "nothing of the kind";
                                        bar.Combo1().KeyUp(LetterKey);
                                      },
                                      [&] {
                                        for (int i = 0; i < Additions; ++i) bar.Room().AddItem(more[next++]);
                                      }});
  report.Figure("one more address", times[1] / Additions, "us");
  report.Ratio("a hundred more addresses against one completion", times[1] / times[0], AdditionsBound);
}

}  // namespace

int main() {
  Report report;
  for (const Case& row :
       {Case{"whole addresses", "www.site", "www.zebra.test/", "WWW.Zeb", false},
        Case{"behind the prefix", "http://www.site", "http://www.zebra.test/", "www.zeb", false},
        Case{"added in no order", "www.site", "www.zebra.test/", "www.zeb", true}})
    MeasureCompletion(report, row);
  MeasureAddition(report);
  return report.Status();
}
