#include <gtest/gtest.h>
#include <cmath>

#include "documents.h"

namespace {

using Texts = std::vector<std::string>;

struct Row {
  const char* name;
  std::string content;
  Texts findings;
};

class CheckRow : public testing::TestWithParam<Row> {};

TEST_P(CheckRow, HasTheseFindings) {
  const DocumentHandle document = loaded(GetParam().content);
  ASSERT_NE(document, nullptr);
  EXPECT_EQ(findingsOf(sceneOf(document)), GetParam().findings);
}

std::string massElement(const std::string& numbers) {
  return "<elementMIP name='m' method='MIP' MIP='MIP," + numbers + "'/>";
}
std::string solid(const std::string& numbers) { return tetrahedron("name='s' MIP='MIP," + numbers + "'"); }
std::string point(const std::string& system) {
  return "<point name='p' center='1,2,3' LCS='CS," + system + "'/>";
}

INSTANTIATE_TEST_SUITE_P(
    Mass, CheckRow,
    testing::Values(
        Row{"Sound", massElement("1, 0,0,0, 1,1,1, 0,0,0"), {}},
        Row{"NoMass", massElement("0, 0,0,0, 1,1,1, 0,0,0"), {"mass-not-positive /GMD/elementMIP[1]/@MIP"}},
        Row{"NegativeMass",
            massElement("-1, 0,0,0, 1,1,1, 0,0,0"),
            {"mass-not-positive /GMD/elementMIP[1]/@MIP"}},
        Row{"Nan", massElement("nan, 0,0,0, 1,1,1, 0,0,0"), {"no-value /GMD/elementMIP[1]/@MIP"}},
        Row{"NegativeMoment",
            massElement("1, 0,0,0, 1,1,-1, 0,0,0"),
            {"tensor-not-positive /GMD/elementMIP[1]/@MIP"}},
        Row{"NoMoments",
            massElement("1, 0,0,0, 0,0,0, 0,0,0"),
            {"tensor-not-positive /GMD/elementMIP[1]/@MIP"}},
        Row{"GreatProducts",
            massElement("1, 0,0,0, 1,1,1, 2,0,0"),
            {"tensor-not-positive /GMD/elementMIP[1]/@MIP"}},
        // a thin rod in six digits: the least moment is -1e-9 of the trace
        Row{"RoundedRod",
            massElement("1, 0,0,0, 1,1,-1e-9, 0,0,0"),
            {"tensor-not-positive /GMD/elementMIP[1]/@MIP"}},
        Row{"Flat", massElement("1, 0,0,0, 1,1,2, 0,0,0"), {}},
        Row{"FlatInSixDigits", massElement("1, 0,0,0, 0.333333,0.333333,0.666667, 0,0,0"), {}},
        Row{"BeyondFlat",
            massElement("1, 0,0,0, 1,1,2.1, 0,0,0"),
            {"tensor-triangle-inequality /GMD/elementMIP[1]/@MIP"}},
        // the same in axes turned by 45 degrees
        Row{"BeyondFlatTurned",
            massElement("1, 0,0,0, 1,1.55,1.55, 0,0,0.55"),
            {"tensor-triangle-inequality /GMD/elementMIP[1]/@MIP"}},
        Row{"OfTheGeometry", solid("1, 0.25,0.25,0.25, 0.075,0.075,0.075, 0.0125,0.0125,0.0125"), {}},
        Row{"OtherCentre",
            solid("1, 0.35,0.25,0.25, 0.075,0.075,0.075, 0.0125,0.0125,0.0125"),
            {"declared-differs /GMD/solid[1]/@MIP"}},
        Row{"CentreOutside",
            solid("1, 2,0.25,0.25, 0.075,0.075,0.075, 0.0125,0.0125,0.0125"),
            {"centre-outside-box /GMD/solid[1]/@MIP", "declared-differs /GMD/solid[1]/@MIP"}},
        Row{"OtherSignOfProducts",
            solid("1, 0.25,0.25,0.25, 0.075,0.075,0.075, -0.0125,-0.0125,-0.0125"),
            {"declared-differs /GMD/solid[1]/@MIP"}},
        Row{"OfADetail",
            "<detail name='d' MIP='MIP,1, 5.25,0.25,0.25, 0.075,0.075,0.075, 0.0125,0.0125,0.0125'>" +
                tetrahedron("name='s' LCS='CS,5,0,0,1,0,0,0,1,0,0,0,1'") + "</detail>",
            {}},
        Row{"OfADetailOutside",
            "<detail name='d' MIP='MIP,1, 4.25,0.25,0.25, 0.075,0.075,0.075, 0.0125,0.0125,0.0125'>" +
                tetrahedron("name='s' LCS='CS,5,0,0,1,0,0,0,1,0,0,0,1'") + "</detail>",
            {"centre-outside-box /GMD/detail[1]/@MIP", "declared-differs /GMD/detail[1]/@MIP"}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Systems, CheckRow,
    testing::Values(
        Row{"Turned", point("1,2,3, 0,1,0, -1,0,0, 0,0,1"), {}},
        Row{"SixDigits", point("0,0,0, 0.707107,0.707107,0, -0.707107,0.707107,0, 0,0,1"), {}},
        Row{"Scaled", point("0,0,0, 2,0,0, 0,2,0, 0,0,2"), {"system-not-orthonormal /GMD/point[1]/@LCS"}},
        Row{"Skewed", point("0,0,0, 1,0,0, 0.1,1,0, 0,0,1"), {"system-not-orthonormal /GMD/point[1]/@LCS"}},
        Row{"NoAxes", point("0,0,0, 0,0,0, 0,0,0, 0,0,0"), {"system-not-orthonormal /GMD/point[1]/@LCS"}},
        Row{"LeftHanded", point("0,0,0, 1,0,0, 0,1,0, 0,0,-1"), {"system-left-handed /GMD/point[1]/@LCS"}},
        Row{"Nan", point("0,0,0, 1,0,0, 0,1,nan, 0,0,1"), {"no-value /GMD/point[1]/@LCS"}},
        Row{"Placement",
            "<templatePoint name='T' center='0,0,0'/><pointRef name='r' template='T' "
            "MCS='CS,0,0,0,1,0,0,0,1,0,0,0,3'/>",
            {"system-not-orthonormal /GMD/pointRef[1]/@MCS"}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Values, CheckRow,
    testing::Values(Row{"Centre", "<point name='p' center='1,nan,inf'/>", {"no-value /GMD/point[1]/@center"}},
                    Row{"Line",
                        "<line name='l' method='polyline'><vertices>0,0,0;nan,0,0;</vertices></line>",
                        {"no-value /GMD/line[1]"}},
                    Row{"Sphere",
                        "<solid name='s' method='sphere' center='1,0,0' radius='inf'/>",
                        {"no-value /GMD/solid[1]/@radius"}}),
    [](const auto& row) { return row.param.name; });

TEST(Checks, CanBeChosen) {
  const DocumentHandle document = loaded(
      "<pointRef name='r' template='gone'/><solid name='s' method='triangulation' MIP='MIP,0,0,0,0,1,1,1,0,0,0'>"
      "<vertices>0,0,0;1,0,0;0,1,0;</vertices><faces>0,1,2;</faces></solid>");
  const SceneHandle scene = sceneOf(document);
  EXPECT_EQ(findingsOf(scene, 0), Texts());
  EXPECT_EQ(findingsOf(scene, ztCADInspect_CheckScene), Texts{"template-missing /GMD/pointRef[1]/@template"});
  EXPECT_EQ(findingsOf(scene, ztCADInspect_CheckMeshes), Texts{"open-edge /GMD/solid[1] x3"});
  EXPECT_EQ(findingsOf(scene, ztCADInspect_CheckMass), Texts{"mass-not-positive /GMD/solid[1]/@MIP"});
  EXPECT_EQ(findingsOf(scene, ztCADInspect_CheckAll | 0x100).size(), 3U);
}

TEST(Checks, SaySeverityElementAndName) {
  const DocumentHandle document =
      loaded("<structure name='arm'>" + massElement("0,0,0,0,0,0,0,0,0,0") + "</structure>");
  const SceneHandle scene = sceneOf(document);
  const FindingsHandle findings(ztCADInspect_check(scene.get(), ztCADInspect_CheckAll));
  ASSERT_EQ(ztCADInspect_findingCount(findings.get()), 1);
  const ztCADInspect_Finding& finding = *ztCADInspect_findingAt(findings.get(), 0);
  EXPECT_EQ(finding.severity, ztCAD_SeverityNote) << "frames without a mass are common";
  EXPECT_STREQ(finding.attribute, "MIP");
  EXPECT_STREQ(finding.name, "m");
  EXPECT_EQ(finding.kind, ztCAD_ElementElementMIP);
  EXPECT_STREQ(finding.path, "/GMD/structure[1]/elementMIP[1]/@MIP");
  EXPECT_EQ(finding.element, ztCADInspect_items(scene.get())[1].element);
  EXPECT_STREQ(finding.message,
               "The declared mass of the mass-inertia element \"m\" is 0; it must be above 0.");
}

// A system of another size cannot be read, only built.
TEST(Checks, SystemsThatAHostBuilt) {
  const DocumentHandle document = loaded("<point name='p' center='1,2,3'/>");
  ztCAD_Base* const point = ztCAD_getFromDoc(document.get(), ztCAD_ElementPoint, 0);
  const double values[13] = {};
  ztCAD_LCS* const system = crtLCS_nostl(values);
  for (const int count : {11, 13}) {
    ztCAD_fillLCS(system, values, count, true);
    ztCAD_setLCS(point, system);
    EXPECT_EQ(findingsOf(sceneOf(document)), Texts{"system-size /GMD/point[1]/@LCS"});
  }
  ztCAD_fillLCS(system, values, 0, true);
  ztCAD_setLCS(point, system);
  EXPECT_EQ(findingsOf(sceneOf(document)), Texts());
}

// ------------------------------------------------------------------------------------- mass tables

const ztCADInspect_MassRow* rowOf(const TableHandle& table, const std::string& name) {
  for (std::int64_t i = 0; i < ztCADInspect_massRowCount(table.get()); ++i)
    if (name == ztCADInspect_massRows(table.get())[i].name) return ztCADInspect_massRows(table.get()) + i;
  return nullptr;
}

TEST(MassTable, DeclaredDataStandsForWhatIsInIt) {
  const std::string unit = "MIP='MIP,2, 0,0,0, 1,1,1, 0,0,0'";
  const DocumentHandle document = loaded(
      "<structure name='all' LCS='CS,0,0,7,1,0,0,0,1,0,0,0,1'><detail name='declares' " + unit + ">" +
      tetrahedron("name='inner' MIP='MIP,50,0,0,0,1,1,1,0,0,0'") +
      "</detail><structure name='group' LCS='CS,10,0,0,0,1,0,-1,0,0,0,0,1'><elementMIP name='m' method='MIP' "
      "LCS='CS,4,0,0,1,0,0,0,1,0,0,0,1' " +
      unit + "/></structure>" + tetrahedron("name='bare'") + "</structure>");
  const SceneHandle scene = sceneOf(document);
  const TableHandle table(ztCADInspect_openMassTable(scene.get()));
  EXPECT_EQ(ztCADInspect_massRowCount(table.get()), 6);
  const ztCADInspect_MassRow& all = *rowOf(table, "all");
  ASSERT_EQ(all.declaredProblem, ztCADInspect_MassKnown);
  EXPECT_EQ(all.ownData, 0);
  EXPECT_EQ(all.undeclared, 1);
  EXPECT_EQ(all.declared.mass, 4);
  // at (0, 0, 0) and (10, 4, 0)
  EXPECT_EQ(all.declared.center[0], 5);
  EXPECT_EQ(all.declared.center[1], 2);
  EXPECT_EQ(all.declared.inertia[0], 2 + 4.0 * 2 * 2);
  EXPECT_EQ(all.declared.inertia[1], -4.0 * 5 * 2);
  EXPECT_EQ(all.declared.inertia[8], 2 + 4.0 * 29);
  EXPECT_EQ(all.computedProblem, ztCADInspect_MassKnown);
  EXPECT_DOUBLE_EQ(all.computed.volume, 2.0 / 6) << "both tetrahedra";
  EXPECT_EQ(all.combinedProblem, ztCADInspect_MassNoDensity);
  EXPECT_EQ(rowOf(table, "declares")->declared.mass, 2);
  EXPECT_EQ(rowOf(table, "inner")->declared.mass, 50);
  EXPECT_EQ(rowOf(table, "group")->declared.center[0], 4) << "in its own frame";
  EXPECT_EQ(rowOf(table, "m")->computedProblem, ztCADInspect_MassNoGeometry);
  EXPECT_EQ(rowOf(table, "m")->parent, rowOf(table, "group") - ztCADInspect_massRows(table.get()));
  const ztCADInspect_MassRow& total = *ztCADInspect_massTotal(table.get());
  EXPECT_EQ(total.declared.center[2], 7) << "in the document's frame";
  EXPECT_EQ(total.element, nullptr);

  ztCADInspect_Options options = defaultOptions();
  options.density = 60;
  const SceneHandle dense = sceneOf(document, &options);
  const TableHandle other(ztCADInspect_openMassTable(dense.get()));
  const ztCADInspect_MassRow& combined = *ztCADInspect_massTotal(other.get());
  ASSERT_EQ(combined.combinedProblem, ztCADInspect_MassKnown);
  EXPECT_DOUBLE_EQ(combined.combined.mass, 2 + 2 + 10);
}

TEST(MassTable, CountsATemplateWhereItIsPlaced) {
  const DocumentHandle document =
      loaded("<template_structure name='T' LCS='CS,1,0,0,1,0,0,0,1,0,0,0,1'>" + tetrahedron("name='s'") +
             "</template_structure><structureRef name='a' template='T'/><structureRef name='b' template='T' "
             "MCS='CS,0,0,5,1,0,0,0,1,0,0,0,-1'/><structureRef name='c' template='gone'/>");
  ztCADInspect_Options options = defaultOptions();
  options.density = 6;
  const SceneHandle scene = sceneOf(document, &options);
  const TableHandle table(ztCADInspect_openMassTable(scene.get()));
  EXPECT_EQ(rowOf(table, "T")->isTemplate, 1);
  EXPECT_EQ(rowOf(table, "s")->isTemplate, 1);
  EXPECT_EQ(rowOf(table, "a")->isTemplate, 0);
  EXPECT_DOUBLE_EQ(rowOf(table, "b")->computed.mass, 1);
  const ztCADInspect_MassRow& total = *ztCADInspect_massTotal(table.get());
  EXPECT_EQ(total.computedProblem, ztCADInspect_MassContent);
  EXPECT_STREQ(total.reason, "structure-reference \"c\": The reference places nothing.");
  EXPECT_EQ(total.uncomputed, 1);
}

TEST(MassTable, SaysWhyNot) {
  const DocumentHandle document = loaded(
      "<structure name='s'><structure name='t'><solid name='open' method='triangulation'><vertices>0,0,0;1,0,0;"
      "0,1,0;</vertices><faces>0,1,2;</faces></solid></structure></structure><solid name='b' method='sphere' "
      "radius='-1' center='0,0,0'/>");
  const SceneHandle scene = sceneOf(document);
  const TableHandle table(ztCADInspect_openMassTable(scene.get()));
  EXPECT_STREQ(rowOf(table, "open")->reason, "The mesh is not closed: an edge has only one facet.");
  EXPECT_STREQ(rowOf(table, "s")->reason,
               "solid \"open\": The mesh is not closed: an edge has only one facet.");
  EXPECT_STREQ(rowOf(table, "b")->reason, "The sphere has no centre or no positive radius.");
  EXPECT_EQ(ztCADInspect_massTotal(table.get())->uncomputed, 2);
}

// every meaning of the ten numbers that the options allow gives back the numbers it was made from
TEST(MassNumbers, AreReadAndWrittenInEveryMeaning) {
  const DocumentHandle document =
      loaded("<detail name='d' LCS='CS,1,2,3,0,1,0,-1,0,0,0,0,1' MIP='MIP,2, 3,4,5, 60,70,80, 1,2,3'/>");
  const ztCAD_Base* const detail = ztCAD_getFromDoc(document.get(), ztCAD_ElementDetail, 0);
  double given[10];
  ASSERT_EQ(ztCAD_getMIP(detail, given, 10), 10);
  ztCADInspect_MassProperties plain;
  ASSERT_EQ(ztCADInspect_declaredMass(detail, nullptr, &plain), ztCADInspect_MassKnown);
  EXPECT_EQ(plain.mass, 2);
  EXPECT_EQ(plain.center[1], 4);
  EXPECT_EQ(plain.inertia[0], 60);
  EXPECT_EQ(plain.inertia[1], 1);
  EXPECT_EQ(plain.inertia[5], 3);
  for (int meaning = 0; meaning < 16; ++meaning) {
    SCOPED_TRACE(meaning);
    ztCADInspect_Options options = defaultOptions();
    options.productsAreIntegrals = meaning & 1;
    options.momentsAboutOrigin = meaning >> 1 & 1;
    options.massInHolderFrame = meaning >> 2 & 1;
    if (meaning >> 3 != 0)
      for (int i = 0; i < 10; ++i)
        options.massOrder[i] = (i + 3) % 10;
    ztCADInspect_MassProperties mass;
    ASSERT_EQ(ztCADInspect_declaredMass(detail, &options, &mass), ztCADInspect_MassKnown);
    double written[10];
    ASSERT_TRUE(ztCADInspect_massToNumbers(&mass, detail, &options, written));
    for (int i = 0; i < 10; ++i)
      EXPECT_NEAR(written[i], given[i], 1e-12) << i;
  }
  ztCADInspect_Options options = defaultOptions();
  options.productsAreIntegrals = 1;
  ztCADInspect_MassProperties mass;
  ztCADInspect_declaredMass(detail, &options, &mass);
  EXPECT_EQ(mass.inertia[1], -1);
  options = defaultOptions();
  options.momentsAboutOrigin = 1;
  ztCADInspect_declaredMass(detail, &options, &mass);
  EXPECT_EQ(mass.inertia[0], 60 - 2 * (16 + 25));
  EXPECT_EQ(mass.inertia[1], 1 + 2 * 12);
  options = defaultOptions();
  options.massInHolderFrame = 1;
  ztCADInspect_declaredMass(detail, &options, &mass);
  // (3, 4, 5) in the frame of the holder is (2, -2, 2) in the system
  EXPECT_NEAR(mass.center[0], 2, 1e-14);
  EXPECT_NEAR(mass.center[1], -2, 1e-14);
  EXPECT_NEAR(mass.inertia[0], 70, 1e-13);
}

}  // namespace
