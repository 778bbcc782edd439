/* A host in C that does with ztCAD_c.h what a C++ host does with the classes: creates elements of every
   kind, sets and reads every field, nests and removes elements, saves, loads and inspects the loaded
   document.  c_interface <file to write>  Exit code 0 on success. */

#include <ztCAD/ztCAD_c.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int failures = 0;

#define EXPECT(condition)                                                          \
  do {                                                                             \
    if (!(condition)) {                                                            \
      fprintf(stderr, "c_interface: line %d: failed: %s\n", __LINE__, #condition); \
      ++failures;                                                                  \
    }                                                                              \
  } while (0)

static const double twelve[12] = {1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1};
static const double ten[10] = {0.5, 0, 0, 0.25, 1, 2, 3, 0, 0, 0};
static const double xyz[12] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
static const uint32_t ijk[12] = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
static const uint32_t red[3] = {255, 0, 128};
static const char cyrillic[] = "\xD0\x94\xD0\xB5\xD1\x82\xD0\xB0\xD0\xBB\xD1\x8C";

/* ------------------------------------------------------------------------------------------------ helpers */

typedef int64_t (*TextOfElement)(const ztCAD_Base*, char*, int64_t);

static bool isText(TextOfElement get, const ztCAD_Base* element, const char* expected) {
  char text[128] = "?";
  const int64_t length = get(element, text, sizeof text);
  return length == (int64_t)strlen(expected) && strcmp(text, expected) == 0;
}

static bool areNumbers(const double* found, const double* expected, int32_t count) {
  return memcmp(found, expected, (size_t)count * sizeof *found) == 0;
}

static ztCAD_Base* onlyOne(ztCAD_GMDDocument* document, int32_t kind) {
  EXPECT(ztCAD_countInDoc(document, kind) == 1);
  ztCAD_Base* const element = ztCAD_getFromDoc(document, kind, 0);
  EXPECT(ztCAD_getKind(element) == kind);
  return element;
}

static ztCAD_Vertices* vertices(void) {
  ztCAD_Vertices* const list = crtVertices();
  addVertexXYZ_nostl(xyz, 4, list);
  return list;
}

static ztCAD_Faces* faces(void) {
  ztCAD_Faces* const list = crtFaces();
  addFacetIJK_nostl(ijk, 4, list);
  return list;
}

static const ztCAD_Coord* corner(void) { return crtCoord(&twelve[0], &twelve[1], &twelve[2]); }

/* -------------------------------------------------------------------------------------------------- lists */

static void lists(void) {
  ztCAD_Vertices* const list = vertices();
  EXPECT(ztCAD_getVertexCount(list) == 4);
  addVertexXYZ_nostl(ztCAD_getVertexData(list), 4, list); /* appended to itself */
  EXPECT(ztCAD_getVertexCount(list) == 8);
  double back[24] = {0};
  EXPECT(getVertexXYZ_nostl(list, 0, 100, back) == 8);
  EXPECT(areNumbers(back, xyz, 12) && areNumbers(back + 12, xyz, 12));
  EXPECT(getVertexXYZ_nostl(list, 5, 2, back) == 2);
  EXPECT(areNumbers(back, xyz + 3, 6));
  EXPECT(areNumbers(ztCAD_getVertexData(list), xyz, 12));
  ztCAD_clearVertices(list);
  EXPECT(ztCAD_getVertexCount(list) == 0);

  ztCAD_Faces* const facets = faces();
  EXPECT(ztCAD_getFacetCount(facets) == 4);
  uint32_t indices[12] = {0};
  EXPECT(getFacetIJK_nostl(facets, 0, 4, indices) == 4);
  EXPECT(memcmp(indices, ijk, sizeof ijk) == 0);
  EXPECT(memcmp(ztCAD_getFacetData(facets), ijk, sizeof ijk) == 0);
  addFacetIJK_nostl(ztCAD_getFacetData(facets), 4, facets);
  EXPECT(ztCAD_getFacetCount(facets) == 8);
  ztCAD_clearFaces(facets);
  EXPECT(ztCAD_getFacetCount(facets) == 0);
}

/* --------------------------------------------------------------------------------------------- every kind */

static void addGeometry(ztCAD_GMDDocument* document) {
  bool nameIsFree = false;
  EXPECT(!addPointToDoc(crtPoint_nostl("point", corner(), &nameIsFree), document));
  EXPECT(nameIsFree);
  EXPECT(!addPolylineToDoc(crtPolyline("line", vertices(), &nameIsFree), document));
  EXPECT(!addSphereToDoc(crtSphere_nostl("sphere", corner(), 2.5, &nameIsFree), document));
  EXPECT(!addTriangleToDoc(crtTriangle_nostl("solid", vertices(), faces(), &nameIsFree), document));
  EXPECT(!addMipElementToDoc(crtMipElement_nostl("mass", crtMIP_nostl(ten, 10)), document));
}

static void addTemplatesAndReferences(ztCAD_GMDDocument* document) {
  bool nameIsFree = false;
  const ztCAD_LCS* const place = crtLCS_nostl(twelve);
  const ztCAD_Base* const point = ztCAD_getFromDoc(document, ztCAD_ElementPoint, 0);
  const ztCAD_Base* const line = ztCAD_getFromDoc(document, ztCAD_ElementLine, 0);
  const ztCAD_Base* const solid = ztCAD_getFromDoc(document, ztCAD_ElementTriangle, 0);
  const ztCAD_Structure* const group = crtStructure_nostl("group", place, &nameIsFree);

  const ztCAD_TmplPoint* const tmplPoint =
      crtTmplPoint_nostl("point template", (const ztCAD_commonPoint*)point, &nameIsFree);
  const ztCAD_TmplLine* const tmplLine =
      crtTmplLine_nostl("line template", (const ztCAD_commonLine*)line, &nameIsFree);
  const ztCAD_TmplTriangle* const tmplSolid =
      crtTmplTriangle_nostl("solid template", (const ztCAD_commonTriangle*)solid, &nameIsFree);
  const ztCAD_TmplElementMIP* const tmplMass =
      crtTmplMipElement_nostl("mass template", crtMIP_nostl(ten, 10));
  const ztCAD_TmplStructure* const tmplGroup =
      crtTmplStructure_nostl("group template", (const ztCAD_commonStructure*)group, &nameIsFree);
  EXPECT(!addTmplPointToDoc(tmplPoint, document));
  EXPECT(!addTmplLineToDoc(tmplLine, document));
  EXPECT(!addTmplTriangleToDoc(tmplSolid, document));
  EXPECT(!addTmplElementMipToDoc(tmplMass, document));
  EXPECT(!addTmplStructureToDoc(tmplGroup, document));

  EXPECT(!addPointRefToDoc(crtPointRef_nostl("point reference", place, tmplPoint, &nameIsFree), document));
  EXPECT(!addLineRefToDoc(crtLineRef_nostl("line reference", place, tmplLine, &nameIsFree), document));
  EXPECT(
      !addTriangleRefToDoc(crtTriangleRef_nostl("solid reference", place, tmplSolid, &nameIsFree), document));
  EXPECT(!addElementMipRefToDoc(crtElementMipRef_nostl("mass reference", place, tmplMass, &nameIsFree),
                                document));
  EXPECT(!addStructureRefToDoc(crtStructureRef_nostl("group reference", place, tmplGroup, &nameIsFree),
                               document));
}

/* There is no creation function for details: they are appended to a document and filled in place. */
static void addDetails(ztCAD_GMDDocument* document) {
  ztCAD_Base* const detail = ztCAD_appendToDoc(document, ztCAD_ElementDetail);
  ztCAD_cmnDetail* const holder = (ztCAD_cmnDetail*)detail;
  ztCAD_setName(detail, cyrillic);
  ztCAD_setMIP(detail, crtMIP_nostl(ten, 10));
  for (int32_t kind = ztCAD_ElementNone; kind <= ztCAD_ElementSphere; ++kind) {
    const ztCAD_Base* const element = ztCAD_getFromDoc(document, kind, 0);
    const bool goesIn = kind == ztCAD_ElementPoint || kind == ztCAD_ElementLine ||
                        kind == ztCAD_ElementSphere || kind == ztCAD_ElementTriangle;
    EXPECT(ztCAD_addToDetail(element, holder) == !goesIn);
    EXPECT(ztCAD_countInDetail(holder, kind) == (goesIn ? 1 : 0));
  }
  ztCAD_Base* const second = ztCAD_appendToDetail(holder, ztCAD_ElementPoint);
  ztCAD_setCenter(second, twelve + 3);
  EXPECT(ztCAD_getFromDetail(holder, ztCAD_ElementPoint, 1) == second);
  ztCAD_Base* points[3] = {NULL, NULL, NULL};
  EXPECT(ztCAD_listDetail(holder, ztCAD_ElementPoint, points, 3) == 2);
  EXPECT(points[1] == second && points[2] == NULL);
  EXPECT(ztCAD_removeFromDetail(second, holder, ztCAD_ElementPoint));
  EXPECT(!ztCAD_removeFromDetail(second, holder, ztCAD_ElementPoint));

  ztCAD_Base* const template = ztCAD_appendToDoc(document, ztCAD_ElementTmplDetail);
  ztCAD_setName(template, "detail template");
  ztCAD_setMIP(template, crtMIP_nostl(ten, 10));
  bool nameIsFree = false;
  const ztCAD_DetailRef* const reference = crtDetailRef_nostl("detail reference", crtLCS_nostl(twelve),
                                                              (const ztCAD_TmplDetail*)template, &nameIsFree);
  EXPECT(!addDetailRefToDoc(reference, document));
  EXPECT(ztCAD_getPlacement((const ztCAD_Base*)reference, NULL, 0) ==
         0); /* a new detail reference has no placement */
}

static void addStructures(ztCAD_GMDDocument* document) {
  ztCAD_Base* const outer = ztCAD_appendToDoc(document, ztCAD_ElementStructure);
  ztCAD_commonStructure* const holder = (ztCAD_commonStructure*)outer;
  ztCAD_setName(outer, "outer");
  ztCAD_setLCS(outer, crtLCS_nostl(twelve));
  EXPECT(ztCAD_addToStructure(outer, holder)); /* a structure cannot hold itself */
  int32_t added = 0;
  for (int32_t kind = ztCAD_ElementNone; kind <= ztCAD_ElementSphere; ++kind) {
    if (kind == ztCAD_ElementStructure || kind == ztCAD_ElementTmplStructure) continue;
    if (!ztCAD_addToStructure(ztCAD_getFromDoc(document, kind, 0), holder)) ++added;
    EXPECT(ztCAD_countInStructure(holder, kind) == (ztCAD_getFromStructure(holder, kind, 0) ? 1 : 0));
  }
  EXPECT(added == 12); /* all kinds except templates */

  ztCAD_Base* const inner = ztCAD_appendToStructure(holder, ztCAD_ElementStructure);
  EXPECT(ztCAD_getKind(inner) == ztCAD_ElementStructure);
  ztCAD_setName(inner, "inner");
  EXPECT(ztCAD_addToStructure(outer, (ztCAD_commonStructure*)inner)); /* a cycle is refused */
  EXPECT(ztCAD_countInStructure(holder, ztCAD_ElementStructure) == 1);
  EXPECT(ztCAD_getFromStructure(holder, ztCAD_ElementStructure, 0) == inner);
  ztCAD_Base* listed = NULL;
  EXPECT(ztCAD_listStructure(holder, ztCAD_ElementStructure, &listed, 1) == 1 && listed == inner);

  ztCAD_Base* const point = ztCAD_appendToStructure(holder, ztCAD_ElementPoint);
  EXPECT(!ztCAD_isSound(point) && !ztCAD_isSound(outer));
  EXPECT(!checkGMDDocument(document));
  EXPECT(ztCAD_removeFromStructure(point, holder, ztCAD_ElementPoint));
}

/* ------------------------------------------------------------------------------------------ fields of all */

static void fields(void) {
  bool nameIsFree = false;
  ztCAD_Base* const point = (ztCAD_Base*)crtPoint_nostl("P", corner(), &nameIsFree);
  ztCAD_setName(point, cyrillic);
  ztCAD_setComment(point, "a comment");
  ztCAD_setInform(point, "\xC4\xE5\xF2\xE0\xEB\xFC"); /* windows-1251 */
  ztCAD_setMethod(point, "any word");
  EXPECT(isText(ztCAD_getName, point, cyrillic));
  EXPECT(isText(ztCAD_getComment, point, "a comment"));
  EXPECT(isText(ztCAD_getInform, point, cyrillic));
  EXPECT(isText(ztCAD_getMethod, point, "any word"));

  uint32_t rgb[3] = {0, 0, 0};
  ztCAD_setColor(point, red);
  EXPECT(ztCAD_getColor(point, rgb) && memcmp(rgb, red, sizeof red) == 0);
  ztCAD_setColor(point, NULL);
  EXPECT(!ztCAD_getColor(point, rgb));
  for (int32_t visible = -1; visible <= 1; ++visible) {
    ztCAD_setVisible(point, visible);
    EXPECT(ztCAD_getVisible(point) == visible);
  }
  double numbers[12] = {0};
  EXPECT(ztCAD_getLCS(point, numbers, 12) == -1);
  ztCAD_setLCS(point, crtLCS_nostl(twelve));
  EXPECT(ztCAD_getLCS(point, numbers, 12) == 12 && areNumbers(numbers, twelve, 12));
  ztCAD_setLCS(point, NULL);
  EXPECT(ztCAD_getLCS(point, numbers, 12) == -1);
  EXPECT(ztCAD_getCenter(point, numbers) && areNumbers(numbers, twelve, 3));
  ztCAD_setCenter(point, twelve + 1);
  EXPECT(ztCAD_getCenter(point, numbers) && areNumbers(numbers, twelve + 1, 3));
  EXPECT(ztCAD_isSound(point));
  ztCAD_setCenter(point, NULL);
  EXPECT(!ztCAD_isSound(point));
  EXPECT(ztCAD_getText(point, true, NULL, 0) > 10);

  ztCAD_Base* const sphere = (ztCAD_Base*)crtSphere_nostl("S", corner(), 2.5, &nameIsFree);
  double radius = 0;
  EXPECT(ztCAD_getRadius(sphere, &radius) && radius == 2.5);
  ztCAD_setRadius(sphere, &twelve[2]);
  EXPECT(ztCAD_getRadius(sphere, &radius) && radius == 3);
  EXPECT(ztCAD_getMIP(sphere, numbers, 12) == -1);
  ztCAD_MIP* const record = crtMIP_nostl(ten, 10);
  ztCAD_setMIPIntegers(record, 7, -8);
  setMIP_nostl(record, (ztCAD_Sphere*)sphere);
  EXPECT(ztCAD_getMIP(sphere, numbers, 12) == 10 && areNumbers(numbers, ten, 10));
  int32_t first = 0;
  int32_t second = 0;
  EXPECT(ztCAD_getMIPIntegers(sphere, &first, &second) && first == 7 && second == -8);

  ztCAD_Base* const mass = (ztCAD_Base*)crtMipElement_nostl("M", crtMIP_nostl(ten, 10));
  ztCAD_setMIP(mass, record);
  EXPECT(ztCAD_getMIPIntegers(mass, &first, &second) && first == 7 && second == -8);
  setCommonPropertyElementMIP_nostl("c", "i", crtLCS_nostl(twelve), (ztCAD_ElementMIP*)mass);
  EXPECT(isText(ztCAD_getComment, mass, "c") && isText(ztCAD_getInform, mass, "i"));
  EXPECT(ztCAD_getLCS(mass, numbers, 12) == 12);

  ztCAD_Base* const solid = (ztCAD_Base*)crtTriangle_nostl("T", crtVertices(), crtFaces(), &nameIsFree);
  ztCAD_setVertices(solid, vertices());
  ztCAD_setFaces(solid, faces());
  EXPECT(ztCAD_getVertexCount(ztCAD_getVertices(solid)) == 4 &&
         ztCAD_getFacetCount(ztCAD_getFaces(solid)) == 4);
  const uint32_t* const r = red;
  setCommonPropertyTriangle_nostl("c", "i", crtColor(&r[0], &r[1], &r[2]), 0, NULL, (ztCAD_Triangle*)solid);
  EXPECT(ztCAD_getColor(solid, rgb) && memcmp(rgb, red, sizeof red) == 0 && ztCAD_getVisible(solid) == 0);
  EXPECT(isText(ztCAD_getName, solid, "T"));
}

/* Fields of many elements by one call. */
static void arrays(void) {
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl("arrays");
  ztCAD_Base* spheres[2] = {NULL, NULL};
  EXPECT(ztCAD_appendManyToDoc(document, ztCAD_ElementSphere, 2, spheres));
  const ztCAD_Base* const elements[2] = {spheres[0], spheres[1]};
  double numbers[24] = {0};
  uint8_t present[2] = {5, 5};
  const uint8_t first[2] = {1, 0};
  EXPECT(ztCAD_setCenters(spheres, 2, twelve, first) == 2);
  EXPECT(ztCAD_getCenters(elements, 2, numbers, present) == 1 && present[0] == 1 && present[1] == 0);
  EXPECT(areNumbers(numbers, twelve, 3) && numbers[3] != numbers[3]);
  EXPECT(ztCAD_setRadii(spheres, 2, twelve + 1, NULL) == 2);
  EXPECT(ztCAD_getRadii(elements, 2, numbers, NULL) == 2 && areNumbers(numbers, twelve + 1, 2));
  const uint32_t colors[6] = {255, 0, 0, 0, 0, 255};
  uint32_t rgb[6] = {0, 0, 0, 0, 0, 0};
  EXPECT(ztCAD_setColors(spheres, 2, colors, NULL) == 2);
  EXPECT(ztCAD_getColors(elements, 2, rgb, NULL) == 2 && memcmp(rgb, colors, sizeof rgb) == 0);
  const int8_t shown[2] = {1, -1};
  int8_t visible[2] = {0, 0};
  EXPECT(ztCAD_setVisibilities(spheres, 2, shown) == 2);
  EXPECT(ztCAD_getVisibilities(elements, 2, visible) == 1 && memcmp(visible, shown, sizeof shown) == 0);
  int32_t sizes[2] = {12, -1};
  EXPECT(ztCAD_setSystems(spheres, 1, twelve, sizes) == 1);
  EXPECT(ztCAD_getSystems(elements, 2, numbers, sizes) == 1 && areNumbers(numbers, twelve, 12));
  EXPECT(sizes[0] == 12 && sizes[1] == -1);
  EXPECT(ztCAD_setMIPs(spheres, 1, ten, NULL) == 1);
  EXPECT(ztCAD_getMIPs(elements, 2, numbers, present) == 1 && areNumbers(numbers, ten, 10));
  const int64_t ends[2] = {1, 3};
  int64_t found[2] = {0, 0};
  char text[4] = "...";
  EXPECT(ztCAD_setTexts(spheres, 2, ztCAD_TextName, "abc", ends) == 2);
  EXPECT(ztCAD_getTexts(elements, 2, ztCAD_TextName, text, 3, found) == 3);
  EXPECT(strcmp(text, "abc") == 0 && found[0] == 1 && found[1] == 3);

  ztCAD_Base* reference = NULL;
  EXPECT(ztCAD_appendManyToDoc(document, ztCAD_ElementPointRef, 1, &reference));
  const ztCAD_Base* const placed = reference;
  EXPECT(ztCAD_setPlacements(&reference, 1, twelve, NULL) == 1);
  EXPECT(ztCAD_getPlacements(&placed, 1, numbers, NULL) == 1 && areNumbers(numbers, twelve, 12));

  ztCAD_Base* holders[2] = {ztCAD_appendToDoc(document, ztCAD_ElementStructure),
                            ztCAD_appendToDoc(document, ztCAD_ElementDetail)};
  ztCAD_Base* solid = NULL;
  EXPECT(ztCAD_appendManyToStructure((ztCAD_commonStructure*)holders[0], ztCAD_ElementPoint, 3, NULL));
  EXPECT(ztCAD_appendManyToDetail((ztCAD_cmnDetail*)holders[1], ztCAD_ElementTriangle, 1, &solid));
  const uint32_t facet[3] = {0, 1, 2};
  EXPECT(ztCAD_setVertexXYZ(solid, twelve, 3) && ztCAD_addVertexXYZ(solid, twelve, 1));
  EXPECT(ztCAD_setFacetIJK(solid, facet, 1) && ztCAD_addFacetIJK(solid, facet, 1));
  EXPECT(ztCAD_getVertexCount(ztCAD_getVertices(solid)) == 4);
  EXPECT(ztCAD_getFacetCount(ztCAD_getFaces(solid)) == 2);
  ztCAD_endDocument(document);
}

static void referenceFields(ztCAD_GMDDocument* document) {
  ztCAD_Base* const reference = onlyOne(document, ztCAD_ElementPointRef);
  double place[12] = {0};
  EXPECT(isText(ztCAD_getTemplateName, reference, "point template"));
  EXPECT(isText(ztCAD_getTemplateFile, reference, ""));
  EXPECT(ztCAD_getPlacement(reference, place, 12) == 12 && areNumbers(place, twelve, 12));
  EXPECT(ztCAD_getLCS(reference, place, 12) == -1);
  EXPECT(ztCAD_isSound(reference));
  ztCAD_setTemplateName(reference, "elsewhere");
  ztCAD_setTemplateFile(reference, "parts.xml");
  ztCAD_setPlacement(reference, crtLCS_nostl(twelve));
  EXPECT(isText(ztCAD_getTemplateName, reference, "elsewhere") &&
         isText(ztCAD_getTemplateFile, reference, "parts.xml"));
}

static void header(ztCAD_GMDDocument* document) {
  const uint32_t version = 4;
  uint32_t found = 0;
  char text[32] = "";
  ztCAD_HeaderNode* const made = crtHeader();
  EXPECT(!ztCAD_getHeaderNumber(made, ztCAD_HeaderMajorVersion, &found));
  ztCAD_setHeaderNumber(made, ztCAD_HeaderMajorVersion, &version);
  ztCAD_setHeaderNumber(made, ztCAD_HeaderMinorVersion, &version);
  ztCAD_setHeaderNumber(made, ztCAD_HeaderState, &version);
  ztCAD_setHeaderText(made, ztCAD_HeaderInform, "what it is");
  ztCAD_setHeaderText(made, ztCAD_HeaderProducerName, "a host in C");
  ztCAD_setHeaderText(made, ztCAD_HeaderProducerVersion, "11");
  ztCAD_setHeaderText(made, ztCAD_HeaderProducerPlatform, "any");
  setHeader(made, document);
  const ztCAD_HeaderNode* const own = ztCAD_getHeader(document);
  EXPECT(own != made);
  for (int32_t field = ztCAD_HeaderMajorVersion; field <= ztCAD_HeaderState; ++field)
    EXPECT(ztCAD_getHeaderNumber(own, field, &found) && found == version);
  EXPECT(ztCAD_getHeaderText(own, ztCAD_HeaderInform, text, sizeof text) == 10 &&
         !strcmp(text, "what it is"));
  EXPECT(ztCAD_getHeaderText(own, ztCAD_HeaderProducerName, text, sizeof text) == 11 &&
         !strcmp(text, "a host in C"));
  EXPECT(ztCAD_getHeaderText(own, ztCAD_HeaderProducerVersion, text, sizeof text) == 2 &&
         !strcmp(text, "11"));
  EXPECT(ztCAD_getHeaderText(own, ztCAD_HeaderProducerPlatform, text, sizeof text) == 3 &&
         !strcmp(text, "any"));
  for (int32_t field = ztCAD_HeaderInform; field <= ztCAD_HeaderProducerPlatform; ++field) {
    ztCAD_setHeaderText(made, field, NULL);
    EXPECT(ztCAD_getHeaderText(made, field, text, sizeof text) == -1);
    EXPECT(ztCAD_getHeaderText(own, field, NULL, 0) > 0); /* the document holds a copy */
  }
}

/* ------------------------------------------------------------------------------------- saving and loading */

/* Checks a loaded document: one element of every kind, by index and by list. */
static void checkLoaded(ztCAD_GMDDocument* document) {
  int32_t kinds = 0;
  for (int32_t kind = ztCAD_ElementNone; kind <= ztCAD_ElementSphere; ++kind) {
    const int32_t count = ztCAD_countInDoc(document, kind);
    if (count == 0) continue;
    ++kinds;
    ztCAD_Base* element = NULL;
    EXPECT(count == 1 && ztCAD_listDoc(document, kind, &element, 1) == 1);
    EXPECT(element && element == ztCAD_getFromDoc(document, kind, 0) && ztCAD_getKind(element) == kind);
    EXPECT(ztCAD_getName(element, NULL, 0) > 0);
    EXPECT(ztCAD_getReadOk(element) != 0);
  }
  EXPECT(kinds == 19);
  const ztCAD_Base* const detail = onlyOne(document, ztCAD_ElementDetail);
  EXPECT(isText(ztCAD_getName, detail, cyrillic) && ztCAD_isSound(detail));
  EXPECT(ztCAD_countInDetail((const ztCAD_cmnDetail*)detail, ztCAD_ElementSphere) == 1);
  ztCAD_Base* const outer = onlyOne(document, ztCAD_ElementStructure);
  const ztCAD_Base* const inner =
      ztCAD_getFromStructure((ztCAD_commonStructure*)outer, ztCAD_ElementStructure, 0);
  EXPECT(isText(ztCAD_getName, inner, "inner"));
  const ztCAD_Base* const line = onlyOne(document, ztCAD_ElementLine);
  EXPECT(areNumbers(ztCAD_getVertexData(ztCAD_getVertices(line)), xyz, 12));
  EXPECT(isText(ztCAD_getTemplateFile, onlyOne(document, ztCAD_ElementPointRef), "parts.xml"));
}

static void saveAndLoad(ztCAD_GMDDocument* document, const char* fileName) {
  int32_t code = -1;
  bool fault = true;
  remove(fileName);                    /* the file of an earlier run must not be checked */
  EXPECT(!checkGMDDocument(document)); /* a detail in a structure passes the check only after it was read */
  SaveGMDDocument_nostl(document, fileName);
  ztCAD_GMDDocument* const read = crtGMDDocumentFromFile_nostl(fileName, &code, &fault);
  EXPECT(code == 0 && !fault);
  checkLoaded(read);
  UpdateGMDDoc_nostl(read, fileName, &code, &fault);
  EXPECT(code == 0 && !fault);
  checkLoaded(read);
  UpdateGMDDoc_nostl(read, "no such file", &code, &fault);
  EXPECT(code == 100 && !fault);
  DeleteGMDDoc(read);
}

static void saveAndLoadWithOutcome(ztCAD_GMDDocument* document, const char* fileName) {
  ztCAD_Outcome outcome;
  memset(&outcome, 0x55, sizeof outcome);
  EXPECT(ztCAD_saveDocument(document, fileName, &outcome));
  EXPECT(outcome.code == 0 && !strcmp(outcome.message, ""));
  EXPECT(!ztCAD_saveDocument(document, "no such folder/file.xml", &outcome));
  EXPECT(outcome.code > 0 && outcome.code < ztCAD_ResultFileMissing && strlen(outcome.message) > 0);

  ztCAD_GMDDocument* const read = ztCAD_loadDocument(fileName, &outcome);
  EXPECT(read && outcome.code == ztCAD_ResultLoaded && !outcome.fault);
  ClearGMDDoc(); /* its nested structures are its own */
  checkLoaded(read);
  EXPECT(!ztCAD_reloadDocument(read, "no such file", &outcome));
  EXPECT(outcome.code == ztCAD_ResultFileMissing && !strcmp(outcome.message, "no such file"));
  checkLoaded(read);
  EXPECT(ztCAD_reloadDocument(read, fileName, NULL));
  checkLoaded(read);
  ztCAD_endDocument(read);

  EXPECT(!ztCAD_loadDocumentFromText("<GMD>\n<point", -1, &outcome));
  EXPECT(outcome.code == ztCAD_ResultNotParsed && outcome.line == 2 && outcome.column > 0);
  ztCAD_GMDDocument* const fromText = ztCAD_loadDocumentFromText("<GMD/>?", 6, &outcome);
  EXPECT(fromText && outcome.code == 0 && outcome.line == 0 && outcome.column == 0);
  ztCAD_Base* const detail = ztCAD_appendToDoc(fromText, ztCAD_ElementDetail);
  EXPECT(!ztCAD_isSound(detail));
  ztCAD_setReadOk(detail, true);
  EXPECT(ztCAD_isSound(detail) && ztCAD_getReadOk(detail) == 1);
  ztCAD_endDocument(fromText);
}

static bool countBytes(const char* bytes, int64_t size, void* context) {
  *(int64_t*)context += size;
  return bytes != NULL;
}

static void saveToFunction(ztCAD_GMDDocument* document) {
  ztCAD_Outcome outcome;
  int64_t size = 0;
  EXPECT(ztCAD_saveDocumentTo(document, countBytes, &size, &outcome));
  EXPECT(outcome.code == 0 && size > 100);
}

static void reviews(void) {
  ztCAD_Outcome outcome;
  ztCAD_Review* const review =
      ztCAD_reviewText("<GMD>\n<point name='hinge'/><!-- --></GMD>", -1, 1, &outcome);
  EXPECT(review && outcome.code == ztCAD_ResultLoaded && outcome.fault);
  EXPECT(ztCAD_findingCount(review) == 1 && ztCAD_omittedFindings(review, ztCAD_SeverityNote) == 1);
  const ztCAD_Finding* const finding = ztCAD_findingAt(review, 0);
  EXPECT(finding && finding->severity == ztCAD_SeverityError && !strcmp(finding->rule, "missing-centre"));
  EXPECT(!strcmp(finding->message, "The point \"hinge\" has no centre."));
  EXPECT(finding->place.line == 2 && finding->place.column == 1 && finding->place.offset == 6);
  EXPECT(!strcmp(finding->path, "/GMD/point[1]") && !strcmp(finding->name, "hinge"));
  EXPECT(!strcmp(ztCAD_kindWord(finding->kind), "point") && !finding->attribute && finding->count == 1);
  const ztCAD_AddedFinding added = {ztCAD_SeverityNote, "a-rule", "About the document.", NULL, NULL, 1};
  EXPECT(ztCAD_addFindings(review, &added, 1) && !strcmp(ztCAD_findingAt(review, 0)->path, "/GMD"));
  ztCAD_GMDDocument* const document = ztCAD_takeReviewedDocument(review);
  ztCAD_endReview(review);
  EXPECT(ztCAD_countInDoc(document, ztCAD_ElementPoint) == 1);
  ztCAD_endDocument(document);
  EXPECT(ztCAD_ruleCount() > 0 && strlen(ztCAD_ruleAt(0)->sentence) > 0 && !ztCAD_ruleAt(-1));
  ztCAD_Review* const missing = ztCAD_reviewFile("no such file", 0, &outcome);
  EXPECT(missing && outcome.code == ztCAD_ResultFileMissing && !ztCAD_findingCount(missing));
  ztCAD_endReview(missing);
}

static void texts(ztCAD_GMDDocument* document) {
  const int64_t length = GMDDocumentToString_nostl(document, true, NULL, 0);
  char* const text = malloc((size_t)length + 1);
  EXPECT(text != NULL);
  if (!text) return;
  EXPECT(GMDDocumentToString_nostl(document, true, text, length + 1) == length);
  EXPECT(strlen(text) == (size_t)length && strstr(text, cyrillic));
  free(text);

  bool parsed = false;
  int line = -1;
  int column = -1;
  char message[64] = "earlier";
  ztCAD_GMDDocument* read = crtGMDDocumentFromStdString_nostl(
      "<GMD><point name='a' center='1, 2, 3;'/></GMD>", &parsed, message, sizeof message, &line, &column);
  EXPECT(parsed && line == 0 && column == 0 && !strcmp(message, ""));
  EXPECT(ztCAD_getReadOk(onlyOne(read, ztCAD_ElementPoint)) == 1);
  DeleteGMDDoc(read);
  read = crtGMDDocumentFromStdString_nostl("<GMD><point name='a'/></GMD>", &parsed, NULL, 0, &line, &column);
  EXPECT(parsed && ztCAD_getReadOk(onlyOne(read, ztCAD_ElementPoint)) == 0);
  DeleteGMDDoc(read);
  char both[64] = "<GMD><point name='a' center='1'/></GMD>";
  read = crtGMDDocumentFromStdString_nostl(both, &parsed, both, sizeof both, &line, &column);
  EXPECT(parsed && ztCAD_countInDoc(read, ztCAD_ElementPoint) == 1 && !strcmp(both, ""));
  DeleteGMDDoc(read);
  read = crtGMDDocumentFromStdString_nostl("<GMD>\n<point>", &parsed, message, 8, &line, &column);
  EXPECT(!parsed && line == 2 && column > 0 && strlen(message) == 7);
  DeleteGMDDoc(read);
}

static void names(void) {
  char corrected[16] = "1 hole";
  EXPECT(doCorrectName_nostl(corrected, corrected, "no name") && !strcmp(corrected, "_1_hole"));
  crtUniqueName_nostl(corrected);
  EXPECT(!strcmp(corrected, ""));
}

static void process(void) {
  uint32_t logical = 0;
  uint32_t physical = 0;
  EXPECT(ztCADVersion()[0] >= '0' && ztCADVersion()[0] <= '9');
  ztCAD_getThreadCounts(&logical, &physical);
  EXPECT(logical == 1 && physical == 1);
  EXPECT(ztCAD_setParallelMode(0) == 1 && ztCAD_getParallelMode() == 0);
  EXPECT(ztCAD_setParallelMode(1) == 0);
  ztCAD_setThreadCounts(1);
}

int main(int count, char** arguments) {
  if (count != 2) {
    fprintf(stderr, "usage: c_interface <file to write>\n");
    return 2;
  }
  names();
  process();
  lists();
  fields();
  arrays();
  ztCAD_GMDDocument* const document = crtGMDDocument_nostl("made in C");
  addGeometry(document);
  addTemplatesAndReferences(document);
  addDetails(document);
  addStructures(document);
  header(document);
  referenceFields(document);
  texts(document);
  saveToFunction(document);
  reviews();
  saveAndLoad(document, arguments[1]);
  saveAndLoadWithOutcome(document, arguments[1]);
  ztCAD_Base* const point = onlyOne(document, ztCAD_ElementPoint);
  EXPECT(ztCAD_removeFromDoc(point, document, ztCAD_ElementPoint));
  EXPECT(ztCAD_countInDoc(document, ztCAD_ElementPoint) == 0);
  DeleteGMDDoc(document);
  return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
