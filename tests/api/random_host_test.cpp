#include <gtest/gtest.h>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "host.h"
#include "random_seed.h"

// A host that operates on structures in random order, using exported functions only. After each step
// everything reachable is traversed, so that a sanitizer detects a dangling pointer.

namespace {

const std::string nestedXml = R"(<GMD>
  <structure name="a" LCS=""><point name="p" center="0, 0, 0;"/>
    <structure name="b"><structure name="c"/><structure name="c"/></structure></structure>
  <template_structure name="t"><structure name="n"><point name="q" center="1, 2, 3;"/></structure></template_structure>
</GMD>)";

/// Number of structures reached from this one, itself included, counted once per path; stops counting at the
/// limit.
std::size_t countFrom(const ztCAD_commonStructure& structure, std::size_t limit) {
  std::size_t count = 1;
  for (const ztCAD_commonStructure* nested : structure.structures()) {
    if (count >= limit) break;
    count += countFrom(*nested, limit - count);
  }
  return count;
}

class Host {
 public:
  explicit Host(std::uint64_t seed) : m_random(seed), m_file(m_files.put("nested.xml", nestedXml)) {
    for (int i = 0; i < 4; ++i)
      createStructure();
  }

  void step() {
    using Step = void (Host::*)();
    static constexpr Step steps[] = {&Host::createStructure,
                                     &Host::createTemplate,
                                     &Host::nest,
                                     &Host::nest,
                                     &Host::nest,
                                     &Host::addToDocument,
                                     &Host::addToDocument,
                                     &Host::addElement,
                                     &Host::removeFromDocument,
                                     &Host::loadDocument,
                                     &Host::loadDocument,
                                     &Host::updateDocument,
                                     &Host::clear,
                                     &Host::deleteDocument,
                                     &Host::saveAndLoad};
    (this->*steps[roll(std::size(steps))])();
    traverse();
  }

  std::size_t traversed() const { return m_traversed; }
  std::size_t saved() const { return m_saved; }

 private:
  std::size_t roll(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random);
  }
  std::string name() { return std::string(1, static_cast<char>('a' + roll(3))); }

  ztCAD_GMDDocument* document() {
    if (m_documents.empty()) m_documents.push_back(newDocument());
    return m_documents[roll(m_documents.size())].get();
  }

  /// All structures that the host may use: those it created and those in its documents, with the structures
  /// nested in them.
  std::vector<ztCAD_commonStructure*> reachable() const {
    std::vector<ztCAD_commonStructure*> all(m_created);
    for (const Document& one : m_documents) {
      for (ztCAD_Structure& structure : *ztCAD_getStructures(one.get()))
        all.push_back(&structure);
      for (ztCAD_TmplStructure& structure : *ztCAD_getTmplStructures(one.get()))
        all.push_back(&structure);
    }
    const std::size_t topLevel = all.size();
    for (std::size_t i = 0; i < topLevel; ++i)
      for (ztCAD_commonStructure* nested : all[i]->structures())
        all.push_back(nested);
    return all;
  }
  ztCAD_commonStructure* any() {
    const auto all = reachable();
    return all[roll(all.size())];
  }

  void createStructure() {
    bool nameIsFree = false;
    m_created.push_back(crtStructure(name(), crtLCS(std::vector<double>(12, 0.0)), nameIsFree));
  }
  void createTemplate() {
    bool nameIsFree = false;
    m_created.push_back(crtTmplStructure(name(), any(), nameIsFree));
  }
  void nest() {
    ztCAD_commonStructure* const inner = any();
    ztCAD_commonStructure* const outer = any();
    constexpr std::size_t enough = 40;  // a structure is written once for each path to it
    if (countFrom(*inner, enough) >= enough || countFrom(*outer, enough) >= enough) return;
    const bool refused = addStructureToStructure(inner, outer);
    EXPECT_TRUE(refused || inner != outer);
  }
  void addToDocument() {
    ztCAD_commonStructure* const structure = m_created[roll(m_created.size())];
    if (countFrom(*structure, 100) >= 100) return;
    if (const auto* const instance = dynamic_cast<ztCAD_Structure*>(structure)) {
      EXPECT_FALSE(addStructureToDoc(instance, document()));
    } else {
      EXPECT_FALSE(addTmplStructureToDoc(dynamic_cast<ztCAD_TmplStructure*>(structure), document()));
    }
  }
  void addElement() { EXPECT_FALSE(addPointToStructure(pointNamed(name()), any())); }
  void removeFromDocument() {
    ztCAD_GMDDocument* const one = document();
    auto& structures = *ztCAD_getStructures(one);
    if (structures.empty()) return;
    EXPECT_TRUE(removeStructureFromDoc(&structures.front(), one));
  }
  void loadDocument() {
    if (m_documents.size() == 4) return deleteDocument();
    m_documents.push_back(loadFile(m_file).document);
  }
  void updateDocument() {
    std::int32_t code = -1;
    bool fault = true;
    UpdateGMDDoc(document(), m_file, code, fault);
    EXPECT_EQ(code, 0);
    EXPECT_FALSE(fault);
  }
  void clear() { ClearGMDDoc(); }
  void deleteDocument() {
    if (!m_documents.empty())
      m_documents.erase(m_documents.begin() + static_cast<std::ptrdiff_t>(roll(m_documents.size())));
  }
  void saveAndLoad() {
    ztCAD_GMDDocument* const one = document();
    std::size_t size = 0;
    for (const ztCAD_Structure& structure : *ztCAD_getStructures(one))
      size += countFrom(structure, 1000);
    if (size >= 1000) return;
    SaveGMDDocument(one, m_files.path("saved.xml"));
    const Loaded loaded = loadFile(m_files.path("saved.xml"));  // deleting it clears the structures read
    EXPECT_TRUE(loaded.code == 0 || loaded.code == 120) << loaded.code;
    ++m_saved;
  }

  void traverse() {
    for (const ztCAD_commonStructure* structure : reachable())
      m_traversed += static_cast<std::size_t>(structure->name().size()) + countFrom(*structure, 100) +
                     structure->content().points.size();
  }

  std::mt19937_64 m_random;
  TemporaryFiles m_files;
  std::string m_file;
  std::vector<ztCAD_commonStructure*> m_created;  // owned by the library
  std::vector<Document> m_documents;
  std::size_t m_traversed = 0;
  std::size_t m_saved = 0;
};

}  // namespace

TEST(RandomHost, LeavesNoDanglingPointer) {
  const std::uint64_t seed = randomSeed();
  std::size_t traversed = 0;
  std::size_t saved = 0;
  for (std::uint64_t round = 0; round < 150; ++round) {
    Host host(seed + round);
    for (int step = 0; step < 150; ++step)
      host.step();
    traversed += host.traversed();
    saved += host.saved();
  }
  EXPECT_GT(traversed, 100000U);
  EXPECT_GT(saved, 400U);
}
