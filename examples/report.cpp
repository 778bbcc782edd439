#include "demo.h"

#include <set>
#include <vector>

namespace demo {

namespace {

/// Where an element is held: by the document, by a structure or detail, or by a template structure or detail.
enum class Place { TopLevel, Nested, InTemplate };

/// The elements of one kind, counted by place.
struct Count {
  const char* kind = "";  // in the singular
  std::size_t topLevel = 0;
  std::size_t nested = 0;
  std::size_t inTemplates = 0;

  std::size_t total() const { return topLevel + nested + inTemplates; }
  void add(Place place, std::size_t elements) {
    (place == Place::TopLevel ? topLevel : place == Place::Nested ? nested : inTemplates) += elements;
  }
};

/// The references of one kind, with the result of looking up their templates by name.
struct ReferenceCount : Count {
  const char* templateKind = "";
  std::set<QString> templates{};  // names of those that the document holds
  std::size_t resolved = 0;
  std::size_t external = 0;  // names a template in another file, which the library does not load
  std::size_t unresolved = 0;
  std::set<QString> missing{};  // names of templates that were not found
};

/// Prints the non-zero numbers of a list, as "2 nested, 1 in templates".
class Details {
 public:
  Details& add(std::size_t number, const char* what) {
    if (number > 0) m_text += (m_text.empty() ? "" : ", ") + std::to_string(number) + " " + what;
    return *this;
  }
  const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

void printCount(const Count& count, const std::string& more = "") {
  if (count.total() == 0) return;
  std::cout << "   " << count.total() << " " << count.kind << (count.total() == 1 ? "" : "s");
  if (count.topLevel < count.total())
    std::cout << " ("
              << Details()
                     .add(count.topLevel, "top-level")
                     .add(count.nested, "nested")
                     .add(count.inTemplates, "in templates")
                     .text()
              << ")";
  std::cout << more << "\n";
}

void printReferences(const ReferenceCount& count) {
  printCount(count, ": " + Details()
                               .add(count.resolved, "resolved")
                               .add(count.external, "external")
                               .add(count.unresolved, "unresolved")
                               .text());
  for (const QString& name : count.missing)
    std::cout << "      no " << count.templateKind << " is named \"" << name.toStdString() << "\"\n";
}

/// Counts what a document holds. Structures nest to any depth; templates exist at the top level only.
class Inventory {
 public:
  explicit Inventory(const ztCAD_DocumentContent& content) {
    addTemplates(content);
    addElements(content, Place::TopLevel);
    for (const ztCAD_Structure& structure : content.structures)
      addStructure(structure, Place::TopLevel);
    for (const ztCAD_TmplStructure& structure : content.templateStructures)
      addContentOf(structure, Place::InTemplate);
    for (const ztCAD_TmplDetail& detail : content.templateDetails)
      addGeometry(detail.content(), Place::InTemplate);
  }

  void print() const {
    for (const Count* count :
         {&m_points, &m_lines, &m_spheres, &m_triangles, &m_mipElements, &m_details, &m_structures})
      printCount(*count);
    for (const Count& count : m_templates)
      printCount(count);
    for (const ReferenceCount* count : {&m_pointReferences, &m_lineReferences, &m_triangleReferences,
                                        &m_mipReferences, &m_detailReferences, &m_structureReferences})
      printReferences(*count);
  }

 private:
  template <typename Template>
  void addTemplates(const ztCAD_Cont<Template>& templates, ReferenceCount& references) {
    m_templates.push_back({references.templateKind, templates.size()});
    for (const Template& element : templates)
      references.templates.insert(element.name());
  }

  void addTemplates(const ztCAD_DocumentContent& content) {
    addTemplates(content.templatePoints, m_pointReferences);
    addTemplates(content.templateLines, m_lineReferences);
    addTemplates(content.templateTriangles, m_triangleReferences);
    addTemplates(content.templateMipElements, m_mipReferences);
    addTemplates(content.templateDetails, m_detailReferences);
    addTemplates(content.templateStructures, m_structureReferences);
  }

  /// Points, lines and solids: what documents, structures and details hold.
  template <typename Content>
  void addGeometry(const Content& content, Place place) {
    m_points.add(place, content.points.size());
    m_lines.add(place, content.lines.size());
    m_spheres.add(place, content.spheres.size());
    m_triangles.add(place, content.triangles.size());
  }

  /// What documents and structures hold, except structures.
  template <typename Content>
  void addElements(const Content& content, Place place) {
    addGeometry(content, place);
    m_mipElements.add(place, content.mipElements.size());
    m_details.add(place, content.details.size());
    for (const ztCAD_Detail& detail : content.details)
      addGeometry(detail.content(), insideOf(place));
    addReferences(content.pointReferences, place, m_pointReferences);
    addReferences(content.lineReferences, place, m_lineReferences);
    addReferences(content.triangleReferences, place, m_triangleReferences);
    addReferences(content.mipReferences, place, m_mipReferences);
    addReferences(content.detailReferences, place, m_detailReferences);
    addReferences(content.structureReferences, place, m_structureReferences);
  }

  void addStructure(const ztCAD_commonStructure& structure, Place place) {
    m_structures.add(place, 1);
    addContentOf(structure, insideOf(place));
  }

  void addContentOf(const ztCAD_commonStructure& structure, Place place) {
    addElements(structure.content(), place);
    for (const ztCAD_commonStructure* nested : structure.structures())
      addStructure(*nested, place);
  }

  /// The library leaves the lookup to its host: a reference names its template, and possibly a file.
  template <typename Reference>
  static void addReferences(const ztCAD_Cont<Reference>& references, Place place, ReferenceCount& count) {
    count.add(place, references.size());
    for (const Reference& reference : references) {
      const ztCAD_gArche& archetype = reference.archetype();
      if (!archetype.file().isEmpty()) {
        ++count.external;
      } else if (count.templates.count(archetype.templateName()) > 0) {
        ++count.resolved;
      } else {
        ++count.unresolved;
        count.missing.insert(archetype.templateName());
      }
    }
  }

  static Place insideOf(Place place) {
    return place == Place::InTemplate ? Place::InTemplate : Place::Nested;
  }

  Count m_points{"point"};
  Count m_lines{"line"};
  Count m_spheres{"sphere"};
  Count m_triangles{"triangulated solid"};
  Count m_mipElements{"mass-inertia element"};
  Count m_details{"detail"};
  Count m_structures{"structure"};
  std::vector<Count> m_templates;
  ReferenceCount m_pointReferences{{"point reference"}, "template point"};
  ReferenceCount m_lineReferences{{"line reference"}, "template line"};
  ReferenceCount m_triangleReferences{{"solid reference"}, "template solid"};
  ReferenceCount m_mipReferences{{"mass-inertia reference"}, "template mass-inertia element"};
  ReferenceCount m_detailReferences{{"detail reference"}, "template detail"};
  ReferenceCount m_structureReferences{{"structure reference"}, "template structure"};
};

}  // namespace

bool report(const std::string& file) {
  ztCAD_Outcome outcome;
  const Document document(ztCAD_loadDocument(file.c_str(), &outcome));
  std::cout << file << "\n   result code " << outcome.code;
  if (!document) {
    std::cout << ": " << outcome.message;
    if (outcome.line > 0) std::cout << ", line " << outcome.line << ", column " << outcome.column;
    std::cout << "\n";
    return false;
  }
  std::cout << (outcome.fault ? ", some element could not be read" : ", every element was read")
            << ", the check " << (outcome.code == ztCAD_ResultLoaded ? "passes" : "fails") << "\n";
  const ztCAD_GMDDocument& loaded = *document;
  Inventory(loaded.content()).print();
  return outcome.code == ztCAD_ResultLoaded;
}

}  // namespace demo
