#pragma once

#include <ztCAD/ztCAD_c.h>

/// @file
/// The library ztCADInspect: what a document means. It places the elements of a document in space,
/// checks meshes, and computes and checks mass properties. Plain C11 and valid C++; it uses
/// `<ztCAD/ztCAD_c.h>` alone.
///
/// **Meaning.** ztCAD stores coordinate systems and mass-inertia data and interprets neither. This library
/// does, as docs/format.md describes; `ztCADInspect_Options` changes every part of that.
///
/// **Frames.** A transform is twelve reals, the first three rows of a 4x4 matrix, row by row: the point (a,
/// b, c) goes to (t[0]*a + t[1]*b + t[2]*c + t[3], t[4]*a + ..., t[8]*a + ...). The frame of an element is
/// the one that its own coordinates are in; the frame of its holder is that of the structure, the detail or
/// the document that contains it.
///
/// **Units** are those of the document. Nothing is converted.
///
/// **Texts** are UTF-8 and zero-terminated. Those in structs belong to the handle that returned the struct.
/// Functions that write a text to a buffer follow `<ztCAD/ztCAD_c.h>`: the result is the length in bytes
/// without the zero; a text that does not fit with its zero is not written; -1: there is no text.
///
/// **Ownership.** Every handle belongs to the host, which ends it with the function that its type names.
/// Documents are not changed and not copied: meshes, scenes, tables and indexes read them in place, so a
/// document must neither change nor end before the handles that were made from it, except where noted.
///
/// **Failures** are return values; no function throws or ends the process. A null handle or array, a count or
/// index out of range and an unknown number are answered as each function states. Functions that return a
/// handle return null for null arguments and when memory runs out.
///
/// **Threads.** ztCAD is called from the calling thread only. Like ztCAD, call this library from one thread
/// at a time; `ztCADInspect_Options::threads` lets it use more for its own work. Results have the same bits
/// for any number of threads, and on every system.

/// Exports a function from the library, or imports it.
#if !defined(_WIN32)
#define ZTCADINSPECT_API __attribute__((visibility("default")))
#elif defined(ZTCADINSPECT_BUILDING_LIBRARY)
#define ZTCADINSPECT_API __declspec(dllexport)
#else
#define ZTCADINSPECT_API __declspec(dllimport)
#endif

ZTCAD_C_BEGIN

/// Version of the library that is loaded, "major.minor.patch". Static text.
ZTCADINSPECT_API const char* ztCADInspect_version(void);

// -------------------------------------------------------------------------------- options

/// What the four triples of a coordinate system are.
enum ztCADInspect_SystemPart {
  ztCADInspect_SystemOrigin = 0,  ///< the origin
  ztCADInspect_SystemX = 1,       ///< the x axis
  ztCADInspect_SystemY = 2,       ///< the y axis
  ztCADInspect_SystemZ = 3        ///< the z axis
};

/// How the own system of a template and the placement of its reference combine.
enum ztCADInspect_TemplateSystem {
  ztCADInspect_TemplateInside = 0,   ///< placement * own system: the own system is inside the placement
  ztCADInspect_TemplateOutside = 1,  ///< own system * placement
  ztCADInspect_TemplateIgnored = 2   ///< the placement alone
};

/// What the ten mass-inertia numbers are.
enum ztCADInspect_MassPart {
  ztCADInspect_MassMass = 0,     ///< the mass
  ztCADInspect_MassCenterX = 1,  ///< centre of mass, x
  ztCADInspect_MassCenterY = 2,  ///< centre of mass, y
  ztCADInspect_MassCenterZ = 3,  ///< centre of mass, z
  ztCADInspect_MassXX = 4,       ///< moment of inertia about the x axis
  ztCADInspect_MassYY = 5,       ///< moment of inertia about the y axis
  ztCADInspect_MassZZ = 6,       ///< moment of inertia about the z axis
  ztCADInspect_MassXY = 7,       ///< product of inertia xy
  ztCADInspect_MassXZ = 8,       ///< product of inertia xz
  ztCADInspect_MassYZ = 9        ///< product of inertia yz
};

/// Settings. Fill it with `ztCADInspect_initOptions`, then change what should differ. Later versions append
/// members; `size` tells them apart.
typedef struct ztCADInspect_Options {  // NOLINT(modernize-use-using): C reads it too
  int64_t size;                        ///< sizeof(ztCADInspect_Options) of the host

  // coordinate systems
  int32_t systemOrder[4];  ///< what each triple is, `ztCADInspect_SystemPart`; default origin, x, y, z
  int32_t
      systemIsTransposed;  ///< 0 (default): the axes are axes; 1: they are the rows of the rotation matrix
  int32_t ownSystems;      ///< 1 (default): elements' coordinates are in their own system; 0: in the frame
                           ///< of their holder, and only structures and details have systems
  int32_t templateSystem;  ///< a `ztCADInspect_TemplateSystem`; default `ztCADInspect_TemplateInside`

  // mass-inertia data
  int32_t massOrder[10];  ///< what each number is, `ztCADInspect_MassPart`; default in that order
  int32_t
      productsAreIntegrals;  ///< 0 (default): products are entries of the inertia matrix, Ixy = -integral of
                             ///< x*y dm; 1: they are the integrals
  int32_t momentsAboutOrigin;  ///< 0 (default): moments are about the centre of mass; 1: about the origin of
                               ///< the frame
  int32_t massInHolderFrame;   ///< 0 (default): centre and axes are those of the element's frame; 1: of the
                               ///< frame of its holder
  double density;              ///< mass of a unit of volume; 0 (default) or less: unknown

  // tolerances
  double systemTolerance;  ///< how far the scalar products of axes may be from 1 and 0; default 1e-5
  double
      degenerateTolerance;    ///< a facet is degenerate if its height is at most this part of the diagonal of
                              ///< the mesh's box; default 1e-12
  double principalTolerance;  ///< by how much of the trace a principal moment may exceed the sum of the other
                              ///< two; default 5e-6, which six significant digits need
  double declaredTolerance;   ///< how far declared data may be from computed data: mass and inertia relative,
                              ///< centre in parts of the diagonal of the box; default 0.01

  // limits
  const char* allowedFolder;  ///< references read files in this folder and below only; null (default): in the
                              ///< folder of the document. Must be valid during the calls that are given it
  int32_t readFiles;          ///< 1 (default): references may read files; 0: no file is read
  int64_t greatestFileSize;   ///< bytes of the files that references name, all together; default 1 GiB
  int64_t greatestFileCount;  ///< number of files that references may read; default 1000
  int32_t greatestDepth;      ///< levels of holders and references above an item; default 256, and not more
  int64_t greatestItemCount;  ///< number of items of a scene; default 5 million
  int32_t threads;  ///< threads to work with; default 1; 0 or less: as many as the machine runs at once
} ztCADInspect_Options;

/// Fills the options with their defaults.
/// @param size sizeof(ztCADInspect_Options) of the host; no byte beyond it is written. Null: nothing happens
ZTCADINSPECT_API void ztCADInspect_initOptions(ztCADInspect_Options* options, int64_t size);

/// The first thing that is wrong with options: an order that is no permutation, an unknown number, a
/// tolerance that is negative or no number, a depth or limit below 0. Functions that take options treat a
/// value that is wrong as its default, and null as all defaults.
/// @return static text, one sentence; null if nothing is wrong, and for null
ZTCADINSPECT_API const char* ztCADInspect_optionsProblem(const ztCADInspect_Options* options);

// -------------------------------------------------------------------------------- findings

/// What the places of a finding are.
enum ztCADInspect_PlaceKind {
  ztCADInspect_PlaceNone = 0,    ///< there are none
  ztCADInspect_PlaceFacet = 1,   ///< indices of facets, from 0
  ztCADInspect_PlaceVertex = 2,  ///< indices of vertices, from 0
  ztCADInspect_PlaceEdge = 3     ///< edges, two indices of vertices each, the smaller one first
};

/// A finding. Its texts belong to the list that it is in.
typedef struct ztCADInspect_Finding {  // NOLINT(modernize-use-using): C reads it too
  int32_t severity;                    ///< a `ztCAD_Severity`
  const char* rule;                    ///< the name of its rule, such as "open-edge"; static
  const char* message;                 ///< one sentence, with the values that were found and expected
  /// The element of the opened document that it is about; null for a mesh that was given as arrays, and for
  /// the document as a whole. A finding about another file names the reference that leads there.
  const ztCAD_Base* element;
  const char* path;       ///< of the element, as in `ztCADInspect_Index`; empty without an element or scene
  const char* attribute;  ///< the attribute that it is about, such as "MIP"; null if about none; static
  int32_t kind;           ///< kind of the element, a `ztCAD_ElementKind`; 0: none
  const char* name;       ///< name of the element; null without an element
  int64_t count;          ///< how often it occurs, at least 1
  int32_t placeKind;      ///< a `ztCADInspect_PlaceKind`
  int32_t placeCount;     ///< number of places: the first ones, at most ten
  const int64_t* places;  ///< `placeCount` indices, twice as many for edges; null if there are none
} ztCADInspect_Finding;

/// A list of findings, ended with `ztCADInspect_endFindings`. It stays valid when the document ends or
/// changes; `element` is then an address only.
ZTCAD_STRUCT(ztCADInspect_Findings);

/// The number of findings; 0 for null.
ZTCADINSPECT_API int64_t ztCADInspect_findingCount(const ztCADInspect_Findings* findings);
/// The finding at an index from 0.
/// @return null for a null list or an index out of range; otherwise valid until the list is ended
ZTCADINSPECT_API const ztCADInspect_Finding* ztCADInspect_findingAt(const ztCADInspect_Findings* findings,
                                                                    int64_t index);
/// Ends a list. Null: nothing happens.
ZTCADINSPECT_API void ztCADInspect_endFindings(ztCADInspect_Findings* findings);

/// The number of rules that findings belong to.
ZTCADINSPECT_API int32_t ztCADInspect_ruleCount(void);
/// The rule at an index from 0, in alphabetical order of names. None has the name of a rule of ztCAD.
/// @return null for an index out of range
ZTCADINSPECT_API const ztCAD_Rule* ztCADInspect_ruleAt(int32_t index);

// -------------------------------------------------------------------------------- mass properties

/// Mass properties, in the frame that the function names.
typedef struct ztCADInspect_MassProperties {  // NOLINT(modernize-use-using): C reads it too
  int32_t hasMass;    ///< 1: `mass` is a mass; 0: the density is unknown, and `mass` is for density 1
  int32_t hasVolume;  ///< 1: computed from geometry; 0: from data, without volume and area
  double mass;        ///< the mass
  double center[3];   ///< centre of mass
  /// Inertia matrix about the centre, in the directions of the frame's axes, row by row; symmetric. Products
  /// are entries of the matrix.
  double inertia[9];
  double volume;  ///< the volume; 0 without one
  double area;    ///< area of the surface; 0 without one; -1 where a system stretches it unevenly
  /// Estimated relative error of volume, centre (to the size) and inertia (to its trace) by rounding; 0 for
  /// data.
  double error;
} ztCADInspect_MassProperties;

/// Why there are no mass properties.
enum ztCADInspect_MassProblem {
  ztCADInspect_MassKnown = 0,         ///< there are
  ztCADInspect_MassNoGeometry = 1,    ///< the element has neither data nor a surface
  ztCADInspect_MassNoFacets = 2,      ///< the mesh has no facets
  ztCADInspect_MassBadIndex = 3,      ///< an index beyond the vertices
  ztCADInspect_MassNoValue = 4,       ///< a number that is nan or infinite
  ztCADInspect_MassOpen = 5,          ///< an edge of one facet
  ztCADInspect_MassNonManifold = 6,   ///< an edge of more than two facets
  ztCADInspect_MassWinding = 7,       ///< two facets pass their edge in the same direction
  ztCADInspect_MassInsideOut = 8,     ///< the volume is negative: all facets are wound the other way
  ztCADInspect_MassNoVolume = 9,      ///< the volume is 0, or too close to it to be told from it
  ztCADInspect_MassNoRadius = 10,     ///< a sphere without a centre or a positive radius
  ztCADInspect_MassNoDensity = 11,    ///< nothing is declared, and the density is unknown
  ztCADInspect_MassContent = 12,      ///< something in it has none
  ztCADInspect_MassNoTemplate = 13,   ///< the reference places nothing
  ztCADInspect_MassNoMemory = 14,     ///< memory ran out
  ztCADInspect_MassNotDeclared = 15,  ///< nothing is declared
  ztCADInspect_MassBadArgument = 16   ///< a null argument
};

/// The sentence for a `ztCADInspect_MassProblem`, such as "The mesh has open edges.". Static text.
/// @return empty for `ztCADInspect_MassKnown` and for an unknown number
ZTCADINSPECT_API const char* ztCADInspect_massProblemText(int32_t problem);

/// The mass-inertia data of an element, understood by the options, in the element's frame.
/// @param mass output; not written without data
/// @return a `ztCADInspect_MassProblem`: known, not declared, or bad argument for null
ZTCADINSPECT_API int32_t ztCADInspect_declaredMass(const ztCAD_Base* element,
                                                   const ztCADInspect_Options* options,
                                                   ztCADInspect_MassProperties* mass);

/// Mass properties of a ball.
/// @param center three reals
/// @return a `ztCADInspect_MassProblem`: known, no radius, no value, or bad argument for null
ZTCADINSPECT_API int32_t ztCADInspect_sphereMass(const double* center, double radius,
                                                 const ztCADInspect_Options* options,
                                                 ztCADInspect_MassProperties* mass);

/// Writes mass properties as the ten numbers that the options describe, for example for `crtMIP_nostl`.
/// @param element whose frame the properties are in: needed only with `massInHolderFrame`; else may be null
/// @param values  output, ten reals
/// @return whether they were written; false for null
ZTCADINSPECT_API bool ztCADInspect_massToNumbers(const ztCADInspect_MassProperties* mass,
                                                 const ztCAD_Base* element,
                                                 const ztCADInspect_Options* options, double* values);

/// Mass properties as seen from the frame that a transform leads to.
/// @param transform twelve reals; any affine map: stretching scales volumes, mirrors keep them positive
/// @param result    output; may be `mass`
/// @return whether it was written; false for null and for numbers that are nan or infinite
ZTCADINSPECT_API bool ztCADInspect_transformMass(const ztCADInspect_MassProperties* mass,
                                                 const double* transform, const ztCADInspect_Options* options,
                                                 ztCADInspect_MassProperties* result);

/// Mass properties of several bodies as one. Volume and area are those of all of them if all have them.
/// @param bodies array of `count`, all in the same frame
/// @return whether it was written; false for null, for a count below 1, and for masses that sum to 0
ZTCADINSPECT_API bool ztCADInspect_sumMass(const ztCADInspect_MassProperties* bodies, int64_t count,
                                           ztCADInspect_MassProperties* result);

// -------------------------------------------------------------------------------- meshes

/// What a mesh is like.
typedef struct ztCADInspect_MeshState {  // NOLINT(modernize-use-using): C reads it too
  int64_t vertexCount;                   ///< vertices
  int64_t facetCount;                    ///< facets
  int64_t valuelessVertices;             ///< vertices with a nan or infinite coordinate
  int64_t outOfRangeFacets;              ///< facets with an index beyond the vertices
  int64_t degenerateFacets;    ///< facets without an area: an index or a position twice, or no height
  int64_t duplicateFacets;     ///< facets of the same three vertices as an earlier one, whatever the winding
  int64_t unusedVertices;      ///< vertices of no facet
  int64_t coincidentVertices;  ///< vertices at exactly the position of an earlier one
  int64_t edges;               ///< edges, of which each counts once
  int64_t openEdges;           ///< edges of one facet
  int64_t nonManifoldEdges;    ///< edges of more than two facets
  int64_t inconsistentEdges;   ///< edges of two facets that both pass it in the same direction
  int64_t shells;              ///< parts that share no vertex
  int32_t isClosed;            ///< 1: it has facets, and each edge has two, in opposite directions
  int32_t isInsideOut;         ///< 1: it is closed, and its volume is negative
  double boxLow[3];            ///< least coordinates of the vertices with values; 0 if there are none
  double boxHigh[3];           ///< greatest coordinates likewise
} ztCADInspect_MeshState;

/// An analysed mesh, ended with `ztCADInspect_endMesh`. It copies nothing: the arrays are read during the
/// analysis only.
ZTCAD_STRUCT(ztCADInspect_Mesh);

/// Analyses a mesh: checks and mass properties. Takes time and memory in proportion to the mesh, at most 40
/// bytes for a facet beside its arrays. Facets with an index out of range or without a value have no edges
/// and are not part of the surface.
/// @param vertices    `vertexCount` * 3 reals, x y z; may be null if there are none
/// @param vertexCount below 0 counts as 0; at most 2147483647
/// @param facets      `facetCount` * 3 indices of vertices, from 0; may be null if there are none
/// @param facetCount  below 0 counts as 0; at most 2147483647
/// @return null for null arrays of a count above 0, for a count above the greatest, and when memory runs out
ZTCAD_NODISCARD ZTCADINSPECT_API ztCADInspect_Mesh* ztCADInspect_analyseMesh(
    const double* vertices, int64_t vertexCount, const uint32_t* facets, int64_t facetCount,
    const ztCADInspect_Options* options);
/// The same for a triangulated solid or its template.
/// @return null also for other kinds
ZTCAD_NODISCARD ZTCADINSPECT_API ztCADInspect_Mesh* ztCADInspect_analyseElement(
    const ztCAD_Base* element, const ztCADInspect_Options* options);
/// What was counted; null for null.
ZTCADINSPECT_API const ztCADInspect_MeshState* ztCADInspect_meshState(const ztCADInspect_Mesh* mesh);
/// The findings about the mesh, which belong to it; null for null.
ZTCADINSPECT_API const ztCADInspect_Findings* ztCADInspect_meshFindings(const ztCADInspect_Mesh* mesh);
/// Mass properties by exact integration over the polyhedron, in the frame of the vertices, with the density
/// of the options. Relative to the size, the result is within 1e-12 of exact arithmetic wherever the mesh
/// lies.
/// @param mass output; not written if there are none
/// @return a `ztCADInspect_MassProblem`
ZTCADINSPECT_API int32_t ztCADInspect_meshMass(const ztCADInspect_Mesh* mesh,
                                               ztCADInspect_MassProperties* mass);
/// Ends a mesh. Null: nothing happens.
ZTCADINSPECT_API void ztCADInspect_endMesh(ztCADInspect_Mesh* mesh);

// -------------------------------------------------------------------------------- scenes

/// What a shape is.
enum ztCADInspect_ShapeKind {
  ztCADInspect_ShapePoint = 1,     ///< a point: `center`
  ztCADInspect_ShapePolyline = 2,  ///< a polyline: `vertices` in their order
  ztCADInspect_ShapeMesh = 3,      ///< triangles: `vertices` and `facets`
  ztCADInspect_ShapeSphere = 4     ///< a sphere: `center` and `radius`
};

/// Geometry of an element in the element's own frame. All items that place it share it. Arrays belong to the
/// element.
typedef struct ztCADInspect_Shape {  // NOLINT(modernize-use-using): C reads it too
  int32_t kind;                      ///< a `ztCADInspect_ShapeKind`
  int32_t file;                      ///< the file that it is in, as in `ztCADInspect_Item`
  const ztCAD_Base* element;         ///< the element that has it
  int64_t vertexCount;               ///< number of vertices
  const double* vertices;            ///< `vertexCount` * 3 reals; null if there are none
  int64_t facetCount;                ///< number of facets
  const uint32_t* facets;            ///< `facetCount` * 3 indices, not compared with the vertices; null: none
  double center[3];                  ///< of a point or sphere; 0 without one
  int32_t hasCenter;                 ///< whether it has one
  int32_t hasRadius;                 ///< whether the sphere has a radius
  double radius;                     ///< of a sphere; 0 without one
} ztCADInspect_Shape;

/// A placed element. Holders come before what is in them: the items of a holder are those after it, up to
/// `end`, and all items are in the order in which a save writes them. References are followed: an item of a
/// structure or detail reference is the holder of what its template contains, an item of any other reference
/// has the shape of its template. Templates are items only where they are placed.
typedef struct ztCADInspect_Item {  // NOLINT(modernize-use-using): C reads it too
  int64_t parent;                   ///< index of its holder; -1 at the top
  int64_t end;                      ///< index after the last item in it; its own index + 1 if it holds none
  int64_t shape;                    ///< index of its shape; -1: none
  const ztCAD_Base* element;        ///< the element; the reference where it is one
  const ztCAD_Base* source;         ///< the element that has the content: the template; null: not resolved
  const char* name;                 ///< name of `element`; empty if it has none
  int32_t kind;                     ///< kind of `element`, a `ztCAD_ElementKind`
  int32_t file;                     ///< file that `element` is in: 0 is the opened document
  /// Colour: its own, else that of its template, else as its holder. Components above 255 count as 255.
  uint8_t color[3];
  uint8_t hasColor;      ///< 1: `color` is given; 0: neither it nor any holder has a colour
  int32_t isVisible;     ///< 0: it, its template or a holder is hidden; 1: none is
  double transform[12];  ///< from the frame of `shape` (of its content, for holders) to that of the document
} ztCADInspect_Item;

/// A document flattened into placed items, ended with `ztCADInspect_endScene`.
ZTCAD_STRUCT(ztCADInspect_Scene);

/// Flattens a document. References are resolved in the document or in the file that they name, which is
/// looked for relative to the file that contains the reference. Each file is loaded once. Time and memory are
/// linear in the number of items, which a limit bounds, because references to references multiply.
///
/// A file is only opened if its name is relative, and it is a regular file, of at most the greatest size,
/// that lies in the allowed folder after all symbolic links are followed. Whatever is not placed gives a
/// finding.
/// @param document not changed; not const because ztCAD lists the content of documents that may be changed
/// @param folder   folder that the document's references are relative to; null or empty: the current one
/// @return a scene, also if there are findings; null for null and when memory runs out
ZTCAD_NODISCARD ZTCADINSPECT_API ztCADInspect_Scene* ztCADInspect_openScene(
    ztCAD_GMDDocument* document, const char* folder, const ztCADInspect_Options* options);

/// The number of items; 0 for null.
ZTCADINSPECT_API int64_t ztCADInspect_itemCount(const ztCADInspect_Scene* scene);
/// All items, one after the other; null if there are none, and for null.
ZTCADINSPECT_API const ztCADInspect_Item* ztCADInspect_items(const ztCADInspect_Scene* scene);
/// The number of shapes; 0 for null.
ZTCADINSPECT_API int64_t ztCADInspect_shapeCount(const ztCADInspect_Scene* scene);
/// All shapes, one after the other; null if there are none, and for null.
ZTCADINSPECT_API const ztCADInspect_Shape* ztCADInspect_shapes(const ztCADInspect_Scene* scene);
/// The path of an item's element in its file, such as "/GMD/structure[1]/point[2]".
/// @param index of the item
/// @param text  output, see above
/// @return the length; -1 for null and for an index out of range
ZTCADINSPECT_API int64_t ztCADInspect_itemPath(const ztCADInspect_Scene* scene, int64_t index, char* text,
                                               int64_t size);
/// The number of files: the document and those that its references name; 0 for null.
ZTCADINSPECT_API int32_t ztCADInspect_fileCount(const ztCADInspect_Scene* scene);
/// The name of a file, relative to `folder`.
/// @param index 0: the opened document, whose name is empty
/// @return null for null and for an index out of range; otherwise valid until the scene is ended
ZTCADINSPECT_API const char* ztCADInspect_fileName(const ztCADInspect_Scene* scene, int32_t index);
/// Ends a scene, with the files that it loaded. Null: nothing happens.
ZTCADINSPECT_API void ztCADInspect_endScene(ztCADInspect_Scene* scene);

/// What to check; add the numbers up.
enum ztCADInspect_Checks {
  ztCADInspect_CheckScene = 1,   ///< references, files, coordinate systems
  ztCADInspect_CheckMeshes = 2,  ///< triangulated solids of the opened document, templates included
  ztCADInspect_CheckMass = 4,    ///< declared mass-inertia data of the opened document
  ztCADInspect_CheckAll = 7      ///< all of them
};

/// Checks a document. Meshes are analysed once for a scene.
/// @param checks sum of `ztCADInspect_Checks`; other bits are ignored
/// @return the findings, in the order in which a save writes the elements, one for each element, list and
///         rule; null for null and when memory runs out
ZTCAD_NODISCARD ZTCADINSPECT_API ztCADInspect_Findings* ztCADInspect_check(ztCADInspect_Scene* scene,
                                                                           int32_t checks);

// -------------------------------------------------------------------------------- mass tables

/// Mass properties of one element, in the element's frame; those of the total are in the document's.
///
/// Data that a detail or any other element declares covers its whole content. The content is summed
/// only where an element declares nothing.
typedef struct ztCADInspect_MassRow {  // NOLINT(modernize-use-using): C reads it too
  const ztCAD_Base* element;           ///< the element; null for the total
  const char* path;                    ///< its path; empty for the total
  const char* name;                    ///< its name; empty for the total
  int32_t kind;                        ///< its kind, a `ztCAD_ElementKind`; 0 for the total
  int32_t isTemplate;                  ///< 1: a template or in one; it counts only where it is placed
  int64_t parent;                      ///< index of the row of its holder; -1 at the top
  int32_t ownData;                     ///< 1: `declared` is its own data; 0: the sum of its content's

  int32_t declaredProblem;  ///< a `ztCADInspect_MassProblem`: why nothing is declared
  int32_t computedProblem;  ///< why nothing was computed
  int32_t combinedProblem;  ///< why there is nothing combined
  /// What is declared. Content that declares nothing is left out of a sum and counted in `undeclared`.
  ztCADInspect_MassProperties declared;
  /// What follows from the geometry: solids and spheres, with the density of the options. Mass-inertia
  /// elements have no geometry and no part in it. It is there only if all geometry has mass properties.
  ztCADInspect_MassProperties computed;
  /// Declared where something is declared, computed with the density elsewhere.
  ztCADInspect_MassProperties combined;
  int64_t undeclared;  ///< solids and spheres in it for which nothing is declared
  int64_t uncomputed;  ///< solids, spheres and references in it of which nothing can be computed
  const char* reason;  ///< why nothing was computed, one sentence; empty if it was
} ztCADInspect_MassRow;

/// The mass properties of a document, ended with `ztCADInspect_endMassTable`.
ZTCAD_STRUCT(ztCADInspect_MassTable);

/// Computes the mass properties of everything in the opened document that can have any: solids, spheres,
/// mass-inertia elements, details, structures, their templates and references. A template is computed once,
/// however often it is placed.
/// @return null for null and when memory runs out. The table ends before its scene
ZTCAD_NODISCARD ZTCADINSPECT_API ztCADInspect_MassTable* ztCADInspect_openMassTable(
    ztCADInspect_Scene* scene);
/// The number of rows, without the total; 0 for null.
ZTCADINSPECT_API int64_t ztCADInspect_massRowCount(const ztCADInspect_MassTable* table);
/// All rows, one after the other, holders before what is in them, in the order in which a save writes the
/// elements; null if there are none, and for null.
ZTCADINSPECT_API const ztCADInspect_MassRow* ztCADInspect_massRows(const ztCADInspect_MassTable* table);
/// The whole document, without templates that are not placed; null for null.
ZTCADINSPECT_API const ztCADInspect_MassRow* ztCADInspect_massTotal(const ztCADInspect_MassTable* table);
/// Ends a table. Null: nothing happens.
ZTCADINSPECT_API void ztCADInspect_endMassTable(ztCADInspect_MassTable* table);

// -------------------------------------------------------------------------------- finding elements

/// Finds elements of a document by path and by name, ended with `ztCADInspect_endIndex`.
///
/// A path names each element by its tag and its number among the siblings of that tag, from 1, in the order
/// in which the next save writes them: "/GMD/structure[1]/detail[3]/solid[2]". A load or save that renames
/// elements or a change of the document makes the index out of date: end it and open another one.
ZTCAD_STRUCT(ztCADInspect_Index);

/// An index, which is built at the first question: in time linear in the document. Every further question
/// takes constant time.
ZTCAD_NODISCARD ZTCADINSPECT_API ztCADInspect_Index* ztCADInspect_openIndex(ztCAD_GMDDocument* document);
/// The element at a path. A step without a number means number 1; an attribute at the end ("/@center") is
/// ignored.
/// @return null for null, and if there is none
ZTCADINSPECT_API const ztCAD_Base* ztCADInspect_findPath(ztCADInspect_Index* index, const char* path);
/// The first element with a name, in the order in which a save writes them, at any depth.
/// @param count output, how many elements have it; may be null
/// @return null for null, and if there is none
ZTCADINSPECT_API const ztCAD_Base* ztCADInspect_findName(ztCADInspect_Index* index, const char* name,
                                                         int64_t* count);
/// The elements with a name, in the order in which a save writes them.
/// @param elements array of `capacity` pointers; may be null if `capacity` is 0
/// @return how many there are, which may be more than were written; 0 for null
ZTCADINSPECT_API int64_t ztCADInspect_listName(ztCADInspect_Index* index, const char* name,
                                               const ztCAD_Base** elements, int64_t capacity);
/// The path of an element of the document. A nested structure that several structures hold has the path of
/// its first place.
/// @param text output, see above
/// @return the length; -1 for null, and for an element that the document does not hold
ZTCADINSPECT_API int64_t ztCADInspect_pathOf(ztCADInspect_Index* index, const ztCAD_Base* element, char* text,
                                             int64_t size);
/// The structure or detail that holds an element; null at the top, for null, and for an element that the
/// document does not hold.
ZTCADINSPECT_API const ztCAD_Base* ztCADInspect_holderOf(ztCADInspect_Index* index,
                                                         const ztCAD_Base* element);
/// Ends an index. Null: nothing happens.
ZTCADINSPECT_API void ztCADInspect_endIndex(ztCADInspect_Index* index);

ZTCAD_C_END
