#include <gtest/gtest.h>
#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "node_text.h"
#include "random_seed.h"
#include "structure/read_structures.h"
#include "structure/sample_elements.h"
#include "structure/structure.h"

namespace {

using Nested = std::vector<ztCAD_commonStructure*>;
Nested nestedIn(const ztCAD_commonStructure& structure) {
  return {structure.structures().begin(), structure.structures().end()};
}

/// Random operations on structures, mirrored in a simple map that records which structure holds which.
class Playground {
 public:
  explicit Playground(std::uint64_t seed) : m_random(seed) {}
  ~Playground() { ztcad::clearReadStructures(); }

  void step() {
    using Step = void (Playground::*)();
    static constexpr Step steps[] = {&Playground::make,
                                     &Playground::make,
                                     &Playground::makeInContainer,
                                     &Playground::nest,
                                     &Playground::nest,
                                     &Playground::nest,
                                     &Playground::nest,
                                     &Playground::copy,
                                     &Playground::assign,
                                     &Playground::assign,
                                     &Playground::assignItself,
                                     &Playground::clone,
                                     &Playground::makeTemplate,
                                     &Playground::readOne,
                                     &Playground::destroy,
                                     &Playground::destroy,
                                     &Playground::destroyInContainer,
                                     &Playground::writeOne,
                                     &Playground::unifyOne};
    (this->*steps[upTo(std::size(steps))])();
    if (upTo(40) == 0) clearRead();
    while (m_held.size() > 60)
      destroyAny();
  }

  void compare() const {
    for (const auto& [holder, nested] : m_held)
      ASSERT_EQ(nestedIn(*holder), nested);
  }

  void end() {
    while (!m_heap.empty() || !m_container.empty())
      destroyAny();
    compare();
  }

  std::map<std::string, int> done;

 private:
  using Structure = ztCAD_commonStructure;

  std::ptrdiff_t upTo(std::size_t limit) {
    return std::uniform_int_distribution<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(limit) - 1)(m_random);
  }
  /// The map's keys are pointers to non-const; the result is used for lookups only.
  static Structure* key(const Structure* structure) {
    return const_cast<Structure*>(structure);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
  }
  Structure* any() {
    return m_held.empty() ? nullptr : std::next(m_held.begin(), upTo(m_held.size()))->first;
  }

  bool reaches(const Structure* from, const Structure* to) const {
    if (from == to) return true;
    const Nested& nested = m_held.at(key(from));
    return std::any_of(nested.begin(), nested.end(), [&](const Structure* one) { return reaches(one, to); });
  }
  /// Number of structures written for this one, itself included; stops counting at a thousand.
  double weight(Structure* structure) const {
    double sum = 1;
    for (Structure* const nested : m_held.at(structure))
      if (sum < 1000) sum += weight(nested);
    return sum;
  }
  void forget(const Structure* gone) {
    m_held.erase(key(gone));
    for (auto& [holder, nested] : m_held)
      nested.erase(std::remove(nested.begin(), nested.end(), gone), nested.end());
  }
  /// Records a structure that was created by reading or cloning, and all structures below it.
  void adopt(Structure* made) {
    ASSERT_EQ(m_held.count(made), 0u) << "the structure is not a new one";
    m_read.insert(made);
    m_held[made] = nestedIn(*made);
    for (Structure* const nested : nestedIn(*made))
      adopt(nested);
  }
  static void compareShape(const Structure& one, const Structure& other) {
    ASSERT_EQ(one.elementName(), other.elementName());
    ASSERT_EQ(one.structures().size(), other.structures().size());
    auto matching = other.structures().begin();
    for (const Structure* nested : one.structures())
      compareShape(*nested, **matching++);
  }

  template <typename S, typename... Arguments>
  S* keep(const Arguments&... arguments) {
    auto made = std::make_unique<S>(arguments...);
    S* const kept = made.get();
    m_heap.push_back(std::move(made));
    m_held[kept];
    return kept;
  }

  void make() {
    ++done["make"];
    if (upTo(2) == 0)
      keep<ztCAD_Structure>();
    else
      keep<ztCAD_TmplStructure>();
  }
  void makeInContainer() {
    auto* const source = dynamic_cast<ztCAD_Structure*>(any());
    if (!source) return;
    ++done["container"];
    m_container.add(*source);
    m_held[&m_container.back()] = m_held.at(source);
  }
  void nest() {
    Structure* const holder = any();
    Structure* const nested = any();
    if (!holder) return;
    const bool refused = reaches(nested, holder);
    ++done[refused ? "refused" : "nest"];
    ASSERT_EQ(holder->addStructure(*nested), refused);
    if (!refused) m_held[holder].push_back(nested);
  }
  void copy() {
    Structure* const source = any();
    if (!source) return;
    ++done["copy"];
    Structure* made = nullptr;
    if (const auto* structure = dynamic_cast<ztCAD_Structure*>(source))
      made = keep<ztCAD_Structure>(*structure);
    else
      made = keep<ztCAD_TmplStructure>(dynamic_cast<ztCAD_TmplStructure&>(*source));
    m_held[made] = m_held.at(source);
  }
  void assign() {
    auto* const target = dynamic_cast<ztCAD_Structure*>(any());
    const auto* const source = dynamic_cast<ztCAD_Structure*>(any());
    if (!target || !source || target == source) return;
    ++done["assign"];
    *target = *source;
    m_held[target].clear();
    for (Structure* const nested : m_held.at(key(source))) {
      if (reaches(nested, target))
        ++done["assignment left out"];
      else
        m_held[target].push_back(nested);
    }
  }
  void assignItself() {
    auto* const target = dynamic_cast<ztCAD_TmplStructure*>(any());
    if (!target) return;
    ++done["assign itself"];
    const ztCAD_TmplStructure& itself = *target;
    *target = itself;
  }
  void clone() {
    Structure* const source = any();
    if (!source || weight(source) > 30) return;
    ++done["clone"];
    Structure* const made = source->clone();
    adopt(made);
    compareShape(*source, *made);
  }
  void makeTemplate() {
    Structure* const source = any();
    if (!source) return;
    ++done["template"];
    bool nameIsFree = false;
    auto made = std::make_unique<ztCAD_TmplStructure>("T", *source, nameIsFree);
    m_held[made.get()] = m_held.at(source);
    m_heap.push_back(std::move(made));
  }
  std::string randomXml(int levels) {
    std::string xml = "<structure name=\"S\">" + pointXml;
    for (std::size_t i = upTo(3); levels > 0 && i > 0; --i)
      xml += randomXml(levels - 1);
    return xml + "</structure>";
  }
  void readOne() {
    Structure* const target = any();
    if (!target) return;
    ++done["read"];
    const std::string xml = randomXml(3);
    EXPECT_TRUE(read(*target, xml));
    m_held[target] = nestedIn(*target);
    for (Structure* const nested : nestedIn(*target))
      adopt(nested);
    std::size_t openings = 0;
    for (auto at = xml.find("<structure"); at != std::string::npos; at = xml.find("<structure", at + 1))
      ++openings;
    ASSERT_EQ(weight(target), openings);
  }
  void writeOne() {
    Structure* const source = any();
    if (!source || weight(source) > 300) return;
    ++done["write"];
    const std::string xml = written(*source);
    std::size_t names = 0;
    for (auto at = xml.find("structure LCS="); at != std::string::npos;
         at = xml.find("structure LCS=", at + 1))
      ++names;
    ASSERT_EQ(names, weight(source));
    ASSERT_FALSE(text(*source, true).empty());
  }
  void unifyOne() {
    Structure* const source = any();
    if (!source || weight(source) > 300) return;
    ++done["unify"];
    source->unifyNames();
    EXPECT_TRUE(source->passesCheck());
  }
  void clearRead() {
    ++done["clear"];
    ztcad::clearReadStructures();
    for (const Structure* gone : m_read)
      forget(gone);
    m_read.clear();
  }
  void destroy() {
    if (m_heap.empty()) return;
    ++done["destroy"];
    const auto place = std::next(m_heap.begin(), upTo(m_heap.size()));
    const Structure* const gone = place->get();
    m_heap.erase(place);
    forget(gone);
  }
  void destroyInContainer() {
    if (m_container.empty()) return;
    ++done["remove"];
    const auto place = std::next(m_container.begin(), upTo(m_container.size()));
    const Structure* const gone = &*place;
    EXPECT_TRUE(m_container.remove(gone));
    forget(gone);
  }
  void destroyAny() {
    const auto choice = upTo(20);
    if (choice == 0 || (m_heap.empty() && m_container.empty()))
      clearRead();
    else if (choice < 10)
      destroyInContainer();
    else
      destroy();
  }

  std::mt19937_64 m_random;
  std::vector<std::unique_ptr<Structure>> m_heap;
  ztCAD_Cont<ztCAD_Structure> m_container;
  std::set<const Structure*> m_read;
  std::map<Structure*, Nested> m_held;  // every existing structure and the structures it holds
};

TEST(NestedStructuresAtRandom, LeaveNoDanglingPointer) {
  std::mt19937_64 seeds(randomSeed());
  std::map<std::string, int> done;
  for (int round = 0; round < 20; ++round) {
    Playground playground(seeds());
    for (int i = 0; i < 1500; ++i) {
      playground.step();
      playground.compare();
      if (testing::Test::HasFatalFailure()) FAIL() << "round " << round << ", step " << i;
    }
    playground.end();
    for (const auto& [what, times] : playground.done)
      done[what] += times;
  }
  for (const char* what :
       {"make", "container", "nest", "refused", "copy", "assign", "assignment left out", "assign itself",
        "clone", "template", "read", "write", "unify", "clear", "destroy", "remove"})
    EXPECT_GT(done[what], 0) << what << " never happened";
}

}  // namespace
