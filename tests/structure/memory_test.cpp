// Allocation failures while structures are nested, copied, cloned and read.

#include <gtest/gtest.h>
#include <functional>
#include <memory>
#include <new>
#include <ostream>

#include "api/failing_memory.h"
#include "node_text.h"
#include "structure/read_structures.h"
#include "structure/sample_elements.h"
#include "structure/structure.h"

namespace {

/// A holder of two nested structures, one of them nested twice, and a target that holds a third.
struct Scene {
  Scene()
      : xml(R"(<structure name="R"><structure name="N"/>)" + pointXml +
            R"(<structure name="M"/></structure>)") {
    for (ztCAD_Structure* nested : {first.get(), second.get(), first.get()})
      holder.addStructure(*nested);
    target->addStructure(*third);
    target->content().points.add(ztCAD_Point());
  }
  ztCAD_Structure holder = structure("H");
  std::unique_ptr<ztCAD_Structure> first = std::make_unique<ztCAD_Structure>();
  std::unique_ptr<ztCAD_Structure> second = std::make_unique<ztCAD_Structure>();
  std::unique_ptr<ztCAD_Structure> third = std::make_unique<ztCAD_Structure>();
  std::unique_ptr<ztCAD_Structure> target = std::make_unique<ztCAD_Structure>();
  std::unique_ptr<ztCAD_commonStructure> made;
  ParsedXml xml;
};

struct Row {
  const char* name;
  std::function<void(Scene&)> act;
};
std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

const Row rows[] = {
    {"Add", [](Scene& s) { s.target->addStructure(*s.first); }},
    {"AddAgain", [](Scene& s) { s.holder.addStructure(*s.first); }},
    {"Copy", [](Scene& s) { s.made = std::make_unique<ztCAD_Structure>(s.holder); }},
    {"Assign", [](Scene& s) { *s.target = s.holder; }},
    {"Clone", [](Scene& s) { s.holder.clone(); }},
    {"Template",
     [](Scene& s) {
       bool nameIsFree = false;
       s.made = std::make_unique<ztCAD_TmplStructure>("T", s.holder, nameIsFree);
     }},
    {"Read",
     [](Scene& s) {
       bool fault = false;
       s.target->readXml(s.xml.root, fault);
     }},
};

class StructureMemory : public testing::TestWithParam<Row> {
 protected:
  /// Destroys the scene in one of two orders. The structures are used along the way, so that a sanitizer
  /// detects a dangling pointer.
  static void destroy(Scene& scene, bool nestedFirst) {
    written(scene.holder);
    written(*scene.target);
    if (nestedFirst) {
      scene.first.reset();
      scene.second.reset();
      scene.third.reset();
      ztcad::clearReadStructures();
      EXPECT_TRUE(scene.holder.structures().empty());
      EXPECT_TRUE(scene.target->structures().empty());
    }
    scene.made.reset();
    scene.target.reset();
    if (!nestedFirst) {
      scene.holder = ztCAD_Structure();
      written(*scene.first);
      scene.first.reset();
      EXPECT_FALSE(scene.second->addStructure(*scene.third));
      ztcad::clearReadStructures();
    }
  }

  /// Runs the row's action with one failing allocation; returns whether an allocation failed.
  static bool failsWith(Scene& scene, long granted) {
    const FailingMemory memory(granted, FailingMemory::Mode::Once);
    try {
      GetParam().act(scene);
    } catch (const std::bad_alloc&) {
    }
    return memory.hasFailed();
  }
};

TEST_P(StructureMemory, AFailedAllocationLeavesNoDanglingPointer) {
  for (const bool nestedFirst : {true, false}) {
    long granted = 0;
    for (bool failed = true; failed; ++granted) {
      Scene scene;
      failed = failsWith(scene, granted);
      destroy(scene, nestedFirst);
    }
    EXPECT_GT(granted, 3);
  }
}

TEST_P(StructureMemory, AFailedAllocationLeavesTheHolderUnchanged) {
  long granted = 0;
  for (bool failed = true; failed; ++granted) {
    Scene scene;
    const std::string before = written(scene.holder);
    failed = failsWith(scene, granted);
    EXPECT_TRUE(!failed || written(scene.holder) == before) << granted;
    ztcad::clearReadStructures();
  }
}

INSTANTIATE_TEST_SUITE_P(Structure, StructureMemory, testing::ValuesIn(rows),
                         [](const auto& row) { return row.param.name; });

}  // namespace
