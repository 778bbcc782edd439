#include <gtest/gtest.h>
#include <algorithm>
#include <cstddef>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/name_counter.h"
#include "differential/dice.h"
#include "random_seed.h"
#include "time_growth.h"

// Names that ascend are only listed; the first one that does not makes a table of them.

namespace {

using Names = std::vector<QString>;

/// What a counter returns, from an ordered map.
class SimpleCounter {
 public:
  bool isNew(const QString& name) { return m_next.emplace(name, 1).second; }

  std::optional<QString> newNameFor(const QString& name) {
    if (isNew(name)) return std::nullopt;
    const QString made = name + QLatin1String("_$") + QString::number(m_next[name]++);
    m_next[made] = 1;
    return made;
  }

 private:
  std::map<QString, int> m_next;
};

class Named {
 public:
  explicit Named(QString name) : m_name(std::move(name)) {}
  ztCAD_ShortText shortName() const { return ztCAD_ShortText(m_name); }
  QString name() const { return m_name; }
  void setName(const QString& name) { m_name = name; }
  void setShortName(const ztCAD_ShortText& name) { m_name = name.toString(); }

 private:
  QString m_name;
};

Names renamed(const Names& names) {
  std::list<Named> elements(names.begin(), names.end());
  ztcad::NameCounter counter;
  ztcad::Renames<Named> renames;
  ztcad::renameDuplicates(elements, counter, renames);
  renames.keep();
  Names after;
  for (const Named& element : elements)
    after.push_back(element.name());
  return after;
}

Names renamedSimply(const Names& names) {
  SimpleCounter counter;
  Names after;
  for (const QString& name : names)
    after.push_back(counter.newNameFor(name).value_or(name));
  return after;
}

/// "P 0", "P 1", ...: short at first, long from some number on if `start` is long.
Names numbered(int count, const QString& start = QLatin1String("P ")) {
  Names names;
  for (int i = 0; i < count; ++i)
    names.push_back(start + QString::number(i));
  return names;
}

std::string textOf(const Names& names) {
  std::string text;
  for (const QString& name : names)
    text += name.toStdString() + ", ";
  return text;
}

template <typename Counter>
std::optional<QString> newNameFor(Counter& counter, const ztCAD_ShortText& name) {
  const std::optional<ztCAD_ShortText> made = counter.newNameFor(name);
  return made ? std::optional(made->toString()) : std::nullopt;
}

/// The counter of elements and that of single names, against the simple one.
void check(const Names& names) {
  ASSERT_EQ(renamed(names), renamedSimply(names)) << textOf(names).substr(0, 1000);
  ztcad::NameCounter counter;
  ztcad::NameCounter seen;
  SimpleCounter simple;
  SimpleCounter simplySeen;
  for (const QString& name : names) {
    const ztCAD_ShortText held(name);
    ASSERT_EQ(newNameFor(counter, held), simple.newNameFor(name)) << textOf(names).substr(0, 1000);
    ASSERT_EQ(seen.isNew(held), simplySeen.isNew(name)) << textOf(names).substr(0, 1000);
  }
}

// of short names, of long ones, of such that become long on the way
const QString starts[] = {QString(), QLatin1String("P "), QLatin1String("P 12345678901 "),
                          QLatin1String("a name of more than 31 characters "), QString(QChar(0x42F))};

TEST(AscendingNames, AreAllNew) {
  for (const QString& start : starts)
    for (const int count : {0, 1, 2, 15, 16, 17, 1000})
      EXPECT_EQ(renamed(numbered(count, start)), numbered(count, start));
}

TEST(AscendingNames, EqualNeighboursAreRenamed) {
  for (const QString& start : starts) {
    for (const std::size_t place : {0U, 1U, 15U, 16U, 17U, 40U, 49U}) {
      for (const int times : {1, 2, 20}) {
        Names names = numbered(50, start);
        for (int i = 0; i < times; ++i)
          names.insert(names.begin() + static_cast<std::ptrdiff_t>(place), names[place]);
        check(names);
      }
    }
  }
}

TEST(AscendingNames, ADuplicateAfterADescentIsFound) {
  for (const QString& start : starts) {
    for (const std::size_t descent : {1U, 2U, 16U, 99U}) {
      for (const std::size_t first : {0U, 1U, 50U, 98U, 99U}) {
        Names names = numbered(100, start);
        names.insert(names.begin() + static_cast<std::ptrdiff_t>(descent), start + QLatin1String("!"));
        check(names);
        names.push_back(names[first]);
        check(names);
        names.push_back(names[first]);
        names.push_back(start + QLatin1String("!"));
        check(names);
      }
    }
  }
}

TEST(AscendingNames, AscentsFromTheStartAreFound) {
  Names names = numbered(300);
  const Names again = numbered(200);
  names.insert(names.end(), again.begin(), again.end());
  check(names);
  names.insert(names.end(), again.begin(), again.end());
  check(names);
}

TEST(AscendingNames, DescendingNamesAreAllNew) {
  for (const QString& start : starts) {
    Names names = numbered(1000, start);
    std::reverse(names.begin(), names.end());
    EXPECT_EQ(renamed(names), names);
  }
}

TEST(AscendingNames, ANewNameMayContinueTheAscent) {
  check({QLatin1String("A"), QLatin1String("A"), QLatin1String("A_$1"), QLatin1String("A_$2"),
         QLatin1String("A")});
  check({QLatin1String("A"), QLatin1String("A_$1"), QLatin1String("A_$1"), QLatin1String("A")});
}

TEST(AscendingNames, AnAscentMayGoOnInTheNextContainer) {
  std::list<Named> points;
  std::list<Named> lines;
  for (const QString& name : numbered(20))
    points.emplace_back(name);
  for (const QString& name : numbered(40))
    lines.emplace_back(name);
  ztcad::NameCounter counter;
  ztcad::Renames<Named> renames;
  ztcad::renameDuplicates(points, counter, renames);
  ztcad::renameDuplicates(lines, counter, renames);
  renames.keep();
  int i = 0;
  for (const Named& line : lines) {
    EXPECT_EQ(line.name(), QString(i < 20 ? QLatin1String("P %1_$1") : QLatin1String("P %1")).arg(i));
    ++i;
  }
}

TEST(AscendingNames, ANameThatDoesNotAscendIsNotTaken) {
  const ztCAD_ShortText a(QLatin1String("A"));
  const ztCAD_ShortText b(QLatin1String("B"));
  ztcad::NameCounter counter;
  EXPECT_TRUE(counter.takeAscending(a));
  EXPECT_FALSE(counter.takeAscending(a));
  EXPECT_FALSE(counter.takeAscending(b)) << "none ascends after one that did not";
  EXPECT_TRUE(counter.isNew(b)) << "it was not taken";
  EXPECT_FALSE(counter.isNew(a));
  EXPECT_FALSE(counter.isNew(b));
}

/// Runs of `kinds` kinds: "0 P 0", "0 P 1", ..., "1 P 0", ...
Names runs(int kinds, int count) {
  Names names;
  for (int kind = 0; kind < kinds; ++kind)
    for (const QString& name : numbered(count, QString::number(kind) + QLatin1String(" P ")))
      names.push_back(name);
  return names;
}

// a table begins at the seventeenth run
TEST(AscendingNames, SeveralRunsAreAllNew) {
  for (const int kinds : {2, 3, 15, 16, 17, 18, 40})
    for (const int count : {1, 2, 30}) {
      const Names names = runs(kinds, count);
      EXPECT_EQ(renamed(names), names) << kinds;
    }
}

TEST(AscendingNames, ADuplicateInAnyEarlierRunIsFound) {
  for (const int kinds : {2, 3, 15, 16, 17}) {
    const Names all = runs(kinds, 12);
    for (std::size_t place = 0; place < all.size(); place += 5) {
      Names names = all;
      names.push_back(all[place]);
      check(names);
      names = all;  // among the names of the last run
      names.insert(names.end() - 3, all[place]);
      check(names);
    }
  }
}

TEST(AscendingNames, ARunMayLieBetweenTheNamesOfAnother) {
  for (const int step : {1, 2, 3, 7, 64, 1000}) {
    const Names all = numbered(1000);
    Names even;
    Names odd;
    for (std::size_t i = 0; i < all.size(); ++i)
      (i / static_cast<std::size_t>(step) % 2 == 0 ? even : odd).push_back(all[i]);
    for (Names* first : {&even, &odd}) {
      Names names = *first;
      const Names& second = first == &even ? odd : even;
      names.insert(names.end(), second.begin(), second.end());
      EXPECT_EQ(renamed(names), names) << step;
      names.push_back(names.front());
      check(names);
    }
  }
}

TEST(AscendingNames, SeveralRunsTakeLinearTime) {
  EXPECT_LT(timeGrowth(4000,
                       [](int count) {
                         ztcad::NameCounter counter;
                         for (const QString& name : runs(16, count / 16))
                           EXPECT_TRUE(counter.takeAscending(ztCAD_ShortText(name)));
                       }),
            linearTimeGrowth);
}

TEST(AscendingNames, ExpectChangesNothing) {
  for (const std::size_t expected : {0U, 1U, 1000U}) {
    const Names names = numbered(60);
    ztcad::NameCounter counter;
    for (const QString& name : names) {
      counter.expect(expected);
      EXPECT_TRUE(counter.isNew(ztCAD_ShortText(name)));
    }
    for (const QString& name : names) {
      EXPECT_FALSE(counter.isNew(ztCAD_ShortText(name)));
      counter.expect(expected);
    }
  }
}

// -------------------------------------------------------------------------------------- names with equal
// hashes

struct EqualHashes {
  uint operator()(const ztCAD_ShortText& /*name*/) const { return 12345; }
};

TEST(AscendingNames, AreCountedSeparatelyWhereTheirHashesAreEqual) {
  const Names names = numbered(2000);
  ztcad::BasicNameCounter<EqualHashes> counter;
  for (const QString& name : names)
    ASSERT_FALSE(counter.newNameFor(ztCAD_ShortText(name)));
  for (int pass = 1; pass < 4; ++pass)
    for (const QString& name : names)
      ASSERT_EQ(newNameFor(counter, ztCAD_ShortText(name)),
                QString(name + QLatin1String("_$") + QString::number(pass)));
}

// A document may be crafted so that the hashes of all its names are equal.
TEST(AscendingNames, TheirTableTakesLinearTimeWhereTheirHashesAreEqual) {
  EXPECT_LT(timeGrowth(4000,
                       [](int count) {
                         ztcad::BasicNameCounter<EqualHashes> counter;
                         for (const QString& name : numbered(count))
                           EXPECT_TRUE(counter.isNew(ztCAD_ShortText(name)));
                         EXPECT_FALSE(counter.isNew(ztCAD_ShortText(QLatin1String("P 0"))));
                       }),
            linearTimeGrowth);
}

// ------------------------------------------------------------------------------------------------- random
// names

/// A series that ascends with some probability at each place, else repeats or goes anywhere.
Names anyNames(Dice& dice) {
  QString start = dice.pick(starts);
  const int count = dice.roll(100);
  const int oddity = 1 + dice.roll(60);
  int next = dice.roll(5);
  Names names;
  for (int i = 0; i < count; ++i) {
    QString name = start + QString::number(next);
    if (dice.oneIn(oddity)) {
      switch (dice.roll(6)) {
        case 0:
          name += QLatin1String("_$") + QString::number(1 + dice.roll(2));
          break;
        case 1:
          name = names.empty() ? QString() : dice.pick(names);
          break;
        case 2:
          next = dice.roll(next + 1);
          break;
        case 3:
          name = dice.pick(starts);
          break;
        case 4:
          start = dice.pick(starts);
          next = dice.roll(3);
          name = start + QString::number(next);
          break;
        default:
          name = names.empty() ? name : names.back();
          break;
      }
    } else {
      next += 1 + (dice.oneIn(10) ? dice.roll(20) : 0);
    }
    names.push_back(name);
  }
  return names;
}

/// Names with and without numbers that make names unique, each several times.
Names numberedAgain(Dice& dice) {
  const QString start = dice.pick(starts);
  const char* const endings[] = {"",     "_$",   "_$0",    "_$1",    "_$2",   "_$3",
                                 "_$01", "_$+1", "_$1_$1", "_$1_$2", "_$2_$1"};
  Names names;
  for (int i = dice.roll(40); i > 0; --i)
    names.push_back(start + QLatin1String(dice.pick(endings)));
  return names;
}

TEST(NameCounterDifferential, NumberedNamesAreCountedAsByAnOrderedMap) {
  Dice dice(randomSeed());
  for (int i = randomRounds(5000); i > 0 && !testing::Test::HasFatalFailure(); --i)
    check(numberedAgain(dice));
}

TEST(NameCounterDifferential, NumberedNamesWithEqualHashesAreCountedAsByAnOrderedMap) {
  Dice dice(randomSeed());
  for (int i = randomRounds(50); i > 0; --i) {
    ztcad::BasicNameCounter<EqualHashes> counter;
    SimpleCounter simple;
    Names names = numbered(300);
    for (const QString& name : numberedAgain(dice))
      names.push_back(name);
    for (const QString& name : names)
      ASSERT_EQ(newNameFor(counter, ztCAD_ShortText(name)), simple.newNameFor(name)) << textOf(names);
  }
}

TEST(AscendingNamesDifferential, AnySeriesIsCountedAsByAnOrderedMap) {
  Dice dice(randomSeed());
  const int rounds = randomRounds(5000);
  int withDuplicates = 0;
  for (int i = 0; i < rounds && !testing::Test::HasFatalFailure(); ++i) {
    const Names names = anyNames(dice);
    check(names);
    withDuplicates += renamedSimply(names) != names ? 1 : 0;
  }
  EXPECT_GT(withDuplicates, rounds / 5);
  EXPECT_LT(withDuplicates, rounds - rounds / 20) << "hardly any series had different names only";
}

}  // namespace
