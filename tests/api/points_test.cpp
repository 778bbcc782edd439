#include <gtest/gtest.h>
#include <cstdio>
#include <iterator>
#include <QtGlobal>
#include <string>

#include "host.h"

namespace {

struct Position {
  double x;
  double y;
  double z;
};
bool operator==(const Position& a, const Position& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

Position positionOf(const ztCAD_Point* point) {
  Position position = {-1, -1, -1};
  getPointCoord(point, position.x, position.y, position.z);
  return position;
}

class Points : public testing::Test {
 protected:
  const Document document = newDocument();
  ztCAD_Cont<ztCAD_Point>* points = ztCAD_getPoints(document.get());
  ztCAD_Cont<ztCAD_TmplPoint>* templatePoints = ztCAD_getTmplPoints(document.get());
};

TEST_F(Points, AreCreatedWithNameCenterAndMethod) {
  bool nameIsFree = false;
  const ztCAD_Point* point = crtPoint("P", coord(1, 2.5, -3), nameIsFree);
  ASSERT_NE(point, nullptr);
  EXPECT_TRUE(nameIsFree);
  EXPECT_EQ(point->name(), QString("P"));
  EXPECT_EQ(point->method().method(), QString("pointXYZ"));
  EXPECT_FALSE(point->readOk());
  EXPECT_EQ(positionOf(point), (Position{1, 2.5, -3}));
}

TEST_F(Points, AcceptAnyName) {
  struct Row {
    const char* name;
    std::string given;
    const char* kept;
  };
  const Row rows[] = {
      {"empty", "", ""},
      {"space", " ", " "},
      {"Cyrillic in UTF-8", "Ёж", "Ёж"},
      {"Cyrillic in windows-1251", "\xA8\xE6", "Ёж"},
      {"emoji", "😀", "😀"},
      {"leading digit", "1 a", "1 a"},
      {"generated name", "A_$1", "A_$1"},
  };
  for (const Row& row : rows) {
    bool nameIsFree = false;
    EXPECT_EQ(crtPoint(row.given, coord(0, 0, 0), nameIsFree)->name(), QString(row.kept)) << row.name;
    EXPECT_TRUE(nameIsFree) << row.name;
    nameIsFree = false;
    EXPECT_EQ(crtPoint_nostl(row.given.c_str(), coord(0, 0, 0), nameIsFree)->name(), QString(row.kept))
        << row.name;
    EXPECT_TRUE(nameIsFree) << row.name;
  }
  bool nameIsFree = false;
  EXPECT_EQ(crtPoint(std::string("a\0b", 3), coord(0, 0, 0), nameIsFree)->name().size(), 3);
  EXPECT_EQ(crtPoint_nostl(nullptr, coord(0, 0, 0), nameIsFree)->name(), QString(""));
}

TEST_F(Points, NameIsReportedFreeEveryTime) {
  for (int i = 0; i < 3; ++i) {
    bool nameIsFree = false;
    const ztCAD_Point* point = crtPoint("same", coord(0, 0, 0), nameIsFree);
    EXPECT_TRUE(nameIsFree);
    addPointToDoc(point, document.get());
    savedBytes(document.get());
  }
}

TEST_F(Points, CopyTheirCoordinate) {
  ztCAD_Coord* shared = coord(1, 2, 3);
  bool nameIsFree = false;
  const ztCAD_Point* first = crtPoint("A", shared, nameIsFree);
  shared->set(4, 5, 6);
  const ztCAD_Point* second = crtPoint("B", shared, nameIsFree);
  EXPECT_EQ(positionOf(first), (Position{1, 2, 3}));
  EXPECT_EQ(positionOf(second), (Position{4, 5, 6}));
}

TEST_F(Points, OutputsOfThePositionCanBeOneVariable) {
  double z = 0;
  getPointCoord(pointAt("P", coord(1, 2, 3)), z, z, z);
  EXPECT_EQ(z, 3);
}

TEST_F(Points, AddingStoresACopyAndReturnsFalse) {
  ztCAD_Point* point = pointNamed("A");
  EXPECT_FALSE(addPointToDoc(point, document.get()));
  point->setName("changed");
  EXPECT_FALSE(addPointToDoc(point, document.get()));
  EXPECT_EQ(namesIn(points), (Names{"A", "changed"}));
}

TEST_F(Points, AStoredPointCanBeAddedAgain) {
  addPointToDoc(pointNamed("A"), document.get());
  EXPECT_FALSE(addPointToDoc(&points->front(), document.get()));
  EXPECT_EQ(namesIn(points), (Names{"A", "A"}));
}

TEST_F(Points, ACreatedPointRemovesNothing) {
  const ztCAD_Point* point = pointNamed("A");
  addPointToDoc(point, document.get());
  EXPECT_FALSE(removePointFromDoc(point, document.get()));
  EXPECT_EQ(namesIn(points), Names{"A"});
}

TEST_F(Points, AStoredPointIsRemovedOnce) {
  for (const char* name : {"A", "B", "C"})
    addPointToDoc(pointNamed(name), document.get());
  const ztCAD_Point* second = &*std::next(points->begin());
  EXPECT_TRUE(removePointFromDoc(second, document.get()));
  EXPECT_EQ(namesIn(points), (Names{"A", "C"}));
  EXPECT_FALSE(removePointFromDoc(second, document.get()));
}

TEST_F(Points, NothingIsRemovedFromAnEmptyOrAnotherDocument) {
  const Document other = newDocument();
  addPointToDoc(pointNamed("A"), other.get());
  const ztCAD_Point* stored = &ztCAD_getPoints(other.get())->front();
  EXPECT_FALSE(removePointFromDoc(stored, document.get()));
  EXPECT_TRUE(removePointFromDoc(stored, other.get()));
}

TEST_F(Points, GetterReturnsTheContainerItself) {
  points->add(*pointNamed("A"));
  EXPECT_EQ(namesIn(ztCAD_getPoints(document.get())), Names{"A"});
  EXPECT_EQ(ztCAD_getPoints(document.get()), points);
  EXPECT_EQ(ztCAD_getTmplPoints(document.get()), templatePoints);
}

TEST_F(Points, TemplateCopiesCenterAndPropertiesOfItsSource) {
  ztCAD_Point* source = pointAt("source", coord(1, 2, 3));
  CommonProperty record;
  record.comment = "c";
  record.inform = "i";
  record.color = ztCAD_Color(1, 2, 3);
  record.visible = ztCAD_Visible(false);
  setCommonProperty(record, source);
  bool nameIsFree = false;
  const ztCAD_TmplPoint* made = crtTmplPoint("made", source, nameIsFree);
  EXPECT_TRUE(nameIsFree);
  EXPECT_FALSE(addTmplPointToDoc(made, document.get()));
  EXPECT_EQ(source->name(), QString("source"));
  const ztCAD_TmplPoint* again = crtTmplPoint("again", made, nameIsFree);
  for (const ztCAD_TmplPoint* point : {made, again}) {
    EXPECT_EQ(point->center().y(), 2);
    EXPECT_EQ(point->property().attributes().comment(), QString("c"));
    EXPECT_EQ(point->property().attributes().inform(), QString("i"));
    EXPECT_EQ(point->property().showable().color().blue(), 3u);
    EXPECT_EQ(point->property().showable().visible().value(), false);
  }
  EXPECT_EQ(made->name(), QString("made"));
  EXPECT_EQ(again->name(), QString("again"));
  EXPECT_EQ(namesIn(templatePoints), Names{"made"});
}

TEST_F(Points, PropertiesAreReplacedExceptForTheName) {
  ztCAD_Point* point = pointNamed("P");
  CommonProperty record;
  record.comment = "Ёж";
  record.inform = "\xA8\xE6";
  record.color = ztCAD_Color(1, 2, 3);
  record.visible = ztCAD_Visible(true);
  record.lcs = ztCAD_LCS(true, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
  setCommonProperty(record, point);
  EXPECT_EQ(point->name(), QString("P"));
  EXPECT_EQ(point->property().attributes().comment(), QString("Ёж"));
  EXPECT_EQ(point->property().attributes().inform(), QString("Ёж"));
  EXPECT_EQ(point->property().showable().color().red(), 1u);
  EXPECT_EQ(point->property().showable().visible().value(), true);
  ASSERT_TRUE(point->property().lcs());
  EXPECT_EQ(point->property().lcs()->values().back(), 12);

  setCommonProperty(CommonProperty(), point);
  EXPECT_EQ(point->name(), QString("P"));
  EXPECT_EQ(point->property().attributes().comment(), QString(""));
  EXPECT_FALSE(point->property().showable().color().isSet());
  EXPECT_FALSE(point->property().showable().visible().isSet());
  EXPECT_TRUE(point->property().lcs()) << "a record without a coordinate system keeps the present one";
}

TEST_F(Points, SavedPointsLoadAgain) {
  ztCAD_Point* point = pointAt("Ёж", coord(1.5, -2, 1e-7));
  CommonProperty record;
  record.comment = "零 <&>";
  record.color = ztCAD_Color(255, 70000, 4294967295u);
  record.visible = ztCAD_Visible(true);
  record.lcs = ztCAD_LCS(true, {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1});
  setCommonProperty(record, point);
  addPointToDoc(point, document.get());
  const std::string bytes = savedBytes(document.get());
  EXPECT_NE(bytes.find("   <point LCS=\"CS, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1\" center=\"1.5, -2, 1e-07;\" "
                       "color=\"RGB, 255, 70000, 4294967295\" comment=\"&#x96f6; &lt;&amp;>\" inform=\"\" "
                       "method=\"pointXYZ\" name=\"\xA8\xE6\" visible=\"true\"/>\n"),
            std::string::npos)
      << bytes;
  const TemporaryFiles files;
  const Loaded loaded = loadFile(files.put("a.xml", bytes));
  EXPECT_EQ(loaded.code, 0);
  EXPECT_FALSE(loaded.fault);
  EXPECT_EQ(positionOf(&ztCAD_getPoints(loaded.document.get())->front()), (Position{1.5, -2, 1e-7}));
  EXPECT_EQ(savedBytes(loaded.document.get()), bytes);
}

TEST_F(Points, PositionOfAPointWithoutCoordinatesIsAFatalErrorNamingThePoint) {
  const ztCAD_Coord none;
  const ztCAD_Point* point = pointAt("Без координат %s", &none);
  double value = 0;
  EXPECT_DEATH(
      {
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
          std::fprintf(stderr, "%s: %s\n", type == QtFatalMsg ? "fatal" : "other",
                       message.toUtf8().constData());
        });
        getPointCoord(point, value, value, value);
      },
      "fatal: .*Без координат %s");
}

}  // namespace
