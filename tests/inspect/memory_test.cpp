// Allocation failures in each function that allocates: null or a problem, and the same answer once memory is
// there again.

#include <gtest/gtest.h>
#include <functional>

#include "api/failing_memory.h"
#include "documents.h"

namespace {

/// A document with templates, references, nested holders, data, and faults that are found.
DocumentHandle sample() {
  return loaded(
      tetrahedron("name='whole' MIP='MIP, 1, 0.25, 0.25, 0.25, 1, 1, 1, 0, 0, 0'") +
      "<solid name='open' method='triangulation'><vertices>0,0,0; 1,0,0; 0,1,0;</vertices><faces>0,1,2; 0,1,7;"
      "</faces></solid><templatePoint name='t' center='1,2,3'/>"
      "<structure name='outer'><structure name='inner'><point name='p' method='pointXYZ' center='0,0,0'/>"
      "</structure></structure><pointRef name='r' template='t' MCS='" +
      turnedAboutZ + "'/><pointRef name='lost' template='absent, a name too long for a short string'/>");
}

/// One call, which tells whether it succeeded, and what it then made, as text.
struct Row {
  const char* name;
  std::function<bool(const ztCADInspect_Options&)> call;
  std::function<std::string()> result;
};

std::string textOf(const SceneHandle& scene) {
  std::string text;
  for (const std::string& item : itemsOf(scene))
    text += item + '\n';
  for (const std::string& finding : findingsOf(scene))
    text += finding + '\n';
  return text;
}

std::string textOf(const ztCADInspect_Findings* findings) {
  std::string text;
  for (std::int64_t i = 0; i < ztCADInspect_findingCount(findings); ++i)
    text += ztCADInspect_findingAt(findings, i)->message + std::string("\n");
  return text;
}

std::string textOf(const ztCADInspect_MassTable* table) {
  std::string text;
  for (std::int64_t i = 0; i < ztCADInspect_massRowCount(table); ++i) {
    const ztCADInspect_MassRow& row = ztCADInspect_massRows(table)[i];
    text += row.path + std::to_string(row.computed.volume) + row.reason + '\n';
  }
  return text;
}

/// Fails each allocation of a call in turn until the call needs no more.
void refuseEach(const Row& row, FailingMemory::Mode mode, std::int32_t threads) {
  ztCADInspect_Options options = defaultOptions();
  options.threads = threads;
  ASSERT_TRUE(row.call(options));
  const std::string expected = row.result();
  bool wasRefused = true;
  for (long granted = 0; wasRefused; ++granted) {
    ASSERT_LT(granted, 10000);
    bool succeeded = false;
    {
      const FailingMemory memory(granted, mode);
      succeeded = row.call(options);
      wasRefused = memory.hasFailed();
    }
    // an allocation that is only for speed may be refused; the answer is the same then
    if (succeeded) {
      ASSERT_EQ(row.result(), expected) << "after " << granted;
    } else {
      ASSERT_TRUE(wasRefused) << "after " << granted;
    }
  }
  ASSERT_TRUE(row.call(options));
  EXPECT_EQ(row.result(), expected);
}

class Memory : public testing::TestWithParam<FailingMemory::Mode> {};

TEST_P(Memory, OfScenes) {
  const DocumentHandle document = sample();
  SceneHandle scene;
  refuseEach({"openScene",
              [&](const ztCADInspect_Options& options) {
                scene.reset();
                scene.reset(ztCADInspect_openScene(document.get(), "", &options));
                return scene != nullptr;
              },
              [&] { return textOf(scene); }},
             GetParam(), 1);
}

TEST_P(Memory, OfChecks) {
  const DocumentHandle document = sample();
  for (const std::int32_t threads : {1, 2}) {
    ztCADInspect_Findings* findings = nullptr;
    refuseEach({"check",
                [&](const ztCADInspect_Options& options) {
                  ztCADInspect_endFindings(findings);
                  findings = nullptr;
                  const SceneHandle scene(ztCADInspect_openScene(document.get(), "", &options));
                  if (scene) findings = ztCADInspect_check(scene.get(), ztCADInspect_CheckAll);
                  return findings != nullptr;
                },
                [&] { return textOf(findings); }},
               GetParam(), threads);
    EXPECT_GT(ztCADInspect_findingCount(findings), 2);
    ztCADInspect_endFindings(findings);
  }
}

TEST_P(Memory, OfMassTables) {
  const DocumentHandle document = sample();
  const SceneHandle scene = sceneOf(document);
  ztCADInspect_MassTable* table = nullptr;
  refuseEach({"openMassTable",
              [&](const ztCADInspect_Options&) {
                ztCADInspect_endMassTable(table);
                table = ztCADInspect_openMassTable(scene.get());
                return table != nullptr;
              },
              [&] { return textOf(table); }},
             GetParam(), 1);
  ztCADInspect_endMassTable(table);
}

TEST_P(Memory, OfMeshes) {
  const DocumentHandle document = sample();
  const ztCAD_Base* const solid = ztCAD_getFromDoc(document.get(), ztCAD_ElementTriangle, 1);
  ASSERT_NE(solid, nullptr);
  ztCADInspect_Mesh* mesh = nullptr;
  refuseEach({"analyseElement",
              [&](const ztCADInspect_Options& options) {
                ztCADInspect_endMesh(mesh);
                mesh = ztCADInspect_analyseElement(solid, &options);
                return mesh != nullptr;
              },
              [&] { return textOf(ztCADInspect_meshFindings(mesh)); }},
             GetParam(), 2);
  ztCADInspect_endMesh(mesh);
}

TEST_P(Memory, OfIndices) {
  const DocumentHandle document = sample();
  ztCADInspect_Index* index = nullptr;
  refuseEach({"openIndex",
              [&](const ztCADInspect_Options&) {
                ztCADInspect_endIndex(index);
                index = ztCADInspect_openIndex(document.get());
                return index && ztCADInspect_findPath(index, "/GMD/structure[1]/structure[1]/point[1]");
              },
              [&] { return std::string("found"); }},
             GetParam(), 1);
  ztCADInspect_endIndex(index);
}

INSTANTIATE_TEST_SUITE_P(Modes, Memory,
                         testing::Values(FailingMemory::Mode::Once, FailingMemory::Mode::Permanently));

}  // namespace
