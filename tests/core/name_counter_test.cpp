#include "core/name_counter.h"

#include <gtest/gtest.h>
#include <deque>
#include <list>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/name_registry.h"
#include "differential/dice.h"

namespace {

using Names = std::vector<std::string>;

class Named {
 public:
  explicit Named(const std::string& name) : m_name(QString::fromStdString(name)) {}
  QString name() const { return m_name; }
  ztCAD_ShortText shortName() const { return ztCAD_ShortText(m_name); }
  void setName(const QString& name) {
    m_name = name;
    ++m_renamings;
  }
  void setShortName(const ztCAD_ShortText& name) { setName(name.toString()); }
  int renamings() const { return m_renamings; }

 private:
  QString m_name;
  int m_renamings = 0;
};

std::list<Named> elementsNamed(const Names& names) { return {names.begin(), names.end()}; }

Names namesOf(const std::list<Named>& elements) {
  Names names;
  for (const Named& element : elements)
    names.push_back(element.name().toStdString());
  return names;
}

struct Row {
  const char* name;
  Names before;
  Names after;
};

const Row rows[] = {
    {"empty", {}, {}},
    {"one", {"A"}, {"A"}},
    {"different", {"A", "B", "a"}, {"A", "B", "a"}},
    {"three with one name", {"A", "A", "A"}, {"A", "A_$1", "A_$2"}},
    {"two names alternating", {"A", "B", "A", "B"}, {"A", "B", "A_$1", "B_$1"}},
    {"empty names", {"", "", ""}, {"", "_$1", "_$2"}},
    {"generated name exists later", {"A", "A", "A_$1"}, {"A", "A_$1", "A_$1_$1"}},
    {"generated name exists earlier", {"A_$1", "A", "A"}, {"A_$1", "A", "A_$1"}},
    {"generated name has a counter of its own",
     {"A_$1", "A_$1", "A", "A", "A_$1"},
     {"A_$1", "A_$1_$1", "A", "A_$1", "A_$1_$1"}},
    {"generated name with a leading zero is another one", {"A", "A", "A_$01"}, {"A", "A_$1", "A_$01"}},
    {"generated name that is made again counts again",
     {"A_$1", "A", "A", "A_$1", "A_$1", "A_$1_$1"},
     {"A_$1", "A", "A_$1", "A_$1_$1", "A_$1_$2", "A_$1_$1_$1"}},
    {"generated name of a generated name",
     {"A", "A", "A_$1", "A_$1", "A_$1_$1", "A_$1_$2", "A_$1_$3"},
     {"A", "A_$1", "A_$1_$1", "A_$1_$2", "A_$1_$1_$1", "A_$1_$2_$1", "A_$1_$3"}},
    {"non-ASCII", {"Точка", "точка", "Точка"}, {"Точка", "точка", "Точка_$1"}},
    {"space and placeholder", {" ", " ", "%1", "%1"}, {" ", " _$1", "%1", "%1_$1"}},
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

template <typename Elements>
void renameDuplicates(Elements& elements, ztcad::NameCounter& counter) {
  ztcad::Renames<Named> renames;
  ztcad::renameDuplicates(elements, counter, renames);
  renames.keep();
}

class RenamedDuplicates : public testing::TestWithParam<Row> {};

TEST_P(RenamedDuplicates, GetACounterAfterTheirName) {
  std::list<Named> elements = elementsNamed(GetParam().before);
  ztcad::NameCounter counter;
  renameDuplicates(elements, counter);
  EXPECT_EQ(namesOf(elements), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(NameCounter, RenamedDuplicates, testing::ValuesIn(rows));

TEST(NameCounter, CountsAcrossContainers) {
  std::list<Named> points = elementsNamed({"A", "B"});
  std::list<Named> lines = elementsNamed({"A", "A"});
  ztcad::NameCounter counter;
  renameDuplicates(points, counter);
  renameDuplicates(lines, counter);
  EXPECT_EQ(namesOf(points), (Names{"A", "B"}));
  EXPECT_EQ(namesOf(lines), (Names{"A_$1", "A_$2"}));
}

template <typename Counter>
std::optional<QString> newNameFor(Counter& counter, const ztCAD_ShortText& name) {
  const std::optional<ztCAD_ShortText> made = counter.newNameFor(name);
  return made ? std::optional(made->toString()) : std::nullopt;
}

/// Names that take turns with "A", each several times.
template <typename Counter>
void countEachThreeTimes(Counter counter, const std::vector<QString>& names) {
  const ztCAD_ShortText nameA(QLatin1String("A"));
  EXPECT_FALSE(newNameFor(counter, nameA));
  for (const QString& name : names)
    EXPECT_FALSE(newNameFor(counter, ztCAD_ShortText(name)));
  EXPECT_EQ(newNameFor(counter, nameA), QLatin1String("A_$1"));
  for (const QString& name : names)
    EXPECT_EQ(newNameFor(counter, ztCAD_ShortText(name)), QString(name + QLatin1String("_$1")));
  for (const QString& name : names)
    EXPECT_EQ(newNameFor(counter, ztCAD_ShortText(name)), QString(name + QLatin1String("_$2")));
  EXPECT_FALSE(counter.isNew(ztCAD_ShortText(names.back() + QLatin1String("_$2"))));
  EXPECT_TRUE(counter.isNew(ztCAD_ShortText(QLatin1String("B"))));
}

struct EqualHashes {
  uint operator()(const ztCAD_ShortText& /*name*/) const { return 12345; }
};

TEST(NameCounter, NamesWithEqualHashesAreCountedSeparately) {
  std::vector<QString> names;
  for (int i = 0; i < 2048; ++i)
    names.push_back(QString::number(i));
  countEachThreeTimes(ztcad::BasicNameCounter<EqualHashes>(), names);
}

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
// Qt 5's hash of a text continues that of its start, so parts with equal hashes give names with equal hashes.

/// Two texts of equal length that give the same hash when appended to `before`.
std::pair<QString, QString> collidingSuffixes(const QString& before) {
  Dice dice(5);
  std::unordered_map<uint, QString> seen;
  while (true) {
    QString end;
    for (int i = 0; i < 12; ++i)
      end += QChar(ushort(0x400 + dice.roll(256)));
    const auto [entry, isNew] = seen.emplace(ztcad::NameHash()(ztCAD_ShortText(before + end)), end);
    if (!isNew && entry->second != end) return {entry->second, end};
  }
}

/// Names with one common hash: each of `parts` parts has two colliding variants, and every combination is a
/// name.
std::vector<QString> collidingNames(int parts) {
  std::vector<QString> names{QString()};
  for (int part = 0; part < parts; ++part) {
    const auto [one, other] = collidingSuffixes(names.front());
    std::vector<QString> longer;
    for (const QString& name : names) {
      longer.push_back(name + one);
      longer.push_back(name + other);
    }
    names = longer;
  }
  return names;
}

TEST(NameCounter, CraftedNamesAreCountedSeparately) {
  const std::vector<QString> names = collidingNames(11);
  std::set<uint> hashes;
  for (const QString& name : names)
    hashes.insert(ztcad::NameHash()(ztCAD_ShortText(name)));
  ASSERT_EQ(hashes.size(), 1U);
  ASSERT_EQ(std::set<QString>(names.begin(), names.end()).size(), 2048U);

  countEachThreeTimes(ztcad::NameCounter(), names);
}
#endif

TEST(NameCounter, EachCounterStartsAtOne) {
  for (int pass = 0; pass < 2; ++pass) {
    ztcad::NameCounter counter;
    EXPECT_FALSE(newNameFor(counter, ztCAD_ShortText(QLatin1String("Q"))));
    EXPECT_EQ(newNameFor(counter, ztCAD_ShortText(QLatin1String("Q"))), QLatin1String("Q_$1"));
  }
}

TEST(NameCounter, ASecondPassChangesNothing) {
  std::list<Named> elements = elementsNamed({"A", "A", "A"});
  for (int pass = 0; pass < 2; ++pass) {
    ztcad::NameCounter counter;
    renameDuplicates(elements, counter);
  }
  EXPECT_EQ(namesOf(elements), (Names{"A", "A_$1", "A_$2"}));
}

TEST(NameCounter, UniqueElementsAreNotRenamed) {
  std::list<Named> elements = elementsNamed({"A", "A"});
  ztcad::NameCounter counter;
  renameDuplicates(elements, counter);
  EXPECT_EQ(elements.front().renamings(), 0);
  EXPECT_EQ(elements.back().renamings(), 1);
}

TEST(NameCounter, RenamesThatAreNotKeptAreUndone) {
  std::list<Named> elements = elementsNamed({"A", "A", "A"});
  {
    ztcad::NameCounter counter;
    ztcad::Renames<Named> renames;
    ztcad::renameDuplicates(elements, counter, renames);
    EXPECT_EQ(namesOf(elements), (Names{"A", "A_$1", "A_$2"}));
  }
  EXPECT_EQ(namesOf(elements), (Names{"A", "A", "A"}));
}

// a quadratic search for a free counter would not finish in reasonable time
TEST(NameCounter, RenamesAMillionDuplicates) {
  constexpr std::size_t count = 1000000;
  std::deque<Named> elements(count, Named("A"));
  ztcad::NameCounter counter;
  renameDuplicates(elements, counter);
  for (std::size_t i = 1; i < count; ++i)
    ASSERT_EQ(elements[i].name(), QString(QLatin1String("A_$%1")).arg(static_cast<qulonglong>(i)));
  EXPECT_EQ(elements.front().name(), QLatin1String("A"));
}

TEST(NameRegistry, EveryNameIsAlwaysFree) {
  for (const char* name : {"", "A", "A", "Точка"})
    EXPECT_TRUE(ztcad::nameIsFree(QString::fromUtf8(name))) << name;
}

TEST(NameRegistry, CanBeUsedAfterItsRelease) {
  ztcad::releaseNameRegistry();
  EXPECT_TRUE(ztcad::nameIsFree(QLatin1String("A")));
  ztcad::releaseNameRegistry();
  ztcad::releaseNameRegistry();
  EXPECT_TRUE(ztcad::nameIsFree(QLatin1String("A")));
}

}  // namespace
