// Names in documents that are read: what reading shows about them is not looked at again, so they are
// compared with names that a simple model makes unique.

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "core/document/unification.h"
#include "differential/dice.h"
#include "random_seed.h"
#include "sample_documents.h"

namespace {

/// A structure, or a document, whose groups are its structures.
struct Group {
  std::string name;
  std::vector<Group> groups;
  Names points;
};

bool operator==(const Group& a, const Group& b) {
  return a.name == b.name && a.points == b.points && a.groups == b.groups;
}

std::ostream& operator<<(std::ostream& out, const Group& group) {
  out << group.name << '(';
  for (const Group& nested : group.groups)
    out << nested << ' ';
  for (const std::string& point : group.points)
    out << '"' << point << "\" ";
  return out << ')';
}

/// Makes the names of one level unique: the first element with a name keeps it.
class Level {
 public:
  void add(std::string& name) {
    const auto [entry, isNew] = m_next.emplace(name, 1);
    if (isNew) return;
    name += "_$" + std::to_string(entry->second++);
    m_next[name] = 1;
  }

 private:
  std::map<std::string, int> m_next;
};

void makeUnique(Group& group) {
  Level level;
  for (Group& nested : group.groups)
    level.add(nested.name);
  for (std::string& point : group.points)
    level.add(point);
  for (Group& nested : group.groups)
    makeUnique(nested);
}

std::string childrenOf(const Group& group, Dice& dice) {
  std::string points;
  for (const std::string& point : group.points)
    points += "<point name='" + point + "' center='0, 0, 0' color=''/>";
  std::string groups;
  for (const Group& nested : group.groups)
    groups += "<structure name='" + nested.name + "' LCS=''>" + childrenOf(nested, dice) + "</structure>";
  return dice.oneIn(2) ? points + groups : groups + points;
}

Group read(const ztCAD_commonStructure& structure) {
  Group group = {structure.name().toStdString(), {}, namesIn(structure.content().points)};
  for (const ztCAD_commonStructure* const nested : structure.structures())
    group.groups.push_back(read(*nested));
  return group;
}

Group read(const ztCAD_GMDDocument& document) {
  Group group = {"", {}, namesIn(document.content().points)};
  for (const ztCAD_Structure& structure : document.content().structures)
    group.groups.push_back(read(structure));
  return group;
}

/// Numbered names in order, with a few exceptions, or names of few letters.
Group anyGroup(Dice& dice, int levels) {
  const char* const starts[] = {"P ", "P", "hinge ", "a name of many letters ", "\xd0\x9f "};
  const char* const others[] = {"P 1", "P 2", "P 10", "P", "S 1", "S 2", "P 1_$1", "hinge 3"};
  Group group;
  const std::string start = dice.pick(starts);
  const int first = dice.roll(20);
  const int count = dice.oneIn(4) ? 60 + dice.roll(20) : dice.roll(12);
  for (int i = 0; i < count; ++i)
    group.points.push_back(dice.oneIn(30) ? dice.pick(others) : start + std::to_string(first + i));
  for (int i = dice.roll(4); levels > 0 && i > 0; --i) {
    Group nested = anyGroup(dice, levels - 1);
    nested.name = dice.oneIn(5) ? dice.pick(others) : "S " + std::to_string(i);
    group.groups.push_back(std::move(nested));
  }
  return group;
}

TEST(NamesThatAreRead, AreMadeUniqueAsBuiltOnesAre) {
  Dice dice(randomSeed());
  int unchanged = 0;
  constexpr int rounds = 400;
  for (int round = 0; round < rounds; ++round) {
    Group expected = anyGroup(dice, 3);
    const Group written = expected;
    ztCAD_GMDDocument document("");
    ASSERT_EQ(loadBytes(document, documentWith(childrenOf(written, dice))).code, 0);
    makeUnique(expected);
    ASSERT_EQ(read(document), expected) << written;
    unchanged += expected == written ? 1 : 0;
  }
  EXPECT_GT(unchanged, rounds / 20);
  EXPECT_LT(unchanged, rounds - rounds / 20);
}

/// A later pass looks at the names themselves.
TEST(NamesThatAreRead, MayBeChangedLater) {
  ztCAD_GMDDocument document("");
  ASSERT_EQ(loadBytes(document, documentWith("<structure name='S' LCS=''><point name='A' center='0, 0, 0'/>"
                                             "<point name='B' center='0, 0, 0'/></structure>"))
                .code,
            0);
  ztCAD_Structure& structure = document.content().structures.front();
  structure.content().points.back().setName(QLatin1String("A"));
  ztcad::unifyNames(document.content());
  EXPECT_EQ(namesIn(structure.content().points), (Names{"A", "A_$1"}));
}

/// Kinds share their names, whichever comes first in the file.
TEST(NamesThatAreRead, OfDifferentKindsAreComparedToo) {
  ztCAD_GMDDocument document("");
  const std::string line = "<line method='polyline' name='P 2' color=''><vertices>0, 0, 0;</vertices></line>";
  const std::string points = "<point name='P 1' center='0, 0, 0'/><point name='P 2' center='0, 0, 0'/>";
  for (const std::string& children : {line + points, points + line}) {
    loadBytes(document, documentWith("<structure name='S' LCS=''>" + children + "</structure>"));
    const ztCAD_StructureContent& content = document.content().structures.front().content();
    EXPECT_EQ(namesIn(content.points), (Names{"P 1", "P 2"}));
    EXPECT_EQ(namesIn(content.lines), (Names{"P 2_$1"}));
  }
}

}  // namespace
