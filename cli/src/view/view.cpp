#include "view.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <sstream>

#include "../check/library_finding.h"
#include "../convert/output_file.h"
#include "../failure.h"
#include "../info/problem.h"
#include "../info/summary.h"
#include "../input_file.h"
#include "../loaded_document.h"
#include "../mass/mass_values.h"
#include "../platform/file_names.h"
#include "../report/finding_json.h"
#include "../report/json_text.h"
#include "../rules/rules.h"
#include "../scene.h"
#include "base85.h"
#include "element_columns.h"
#include "finding_list.h"
#include "json_writer.h"
#include "page_text.h"
#include "scene_json.h"

namespace cli {

namespace {

using nlohmann::ordered_json;

struct EndReview {
  void operator()(ztCAD_Review* review) const { ztCAD_endReview(review); }
};

struct EndMassTable {
  void operator()(ztCADInspect_MassTable* table) const { ztCADInspect_endMassTable(table); }
};

std::string bytesOf(const std::string& path) {
  std::ifstream stream(pathOf(path), std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

/// A document, and what the libraries say about it.
class Subject {
 public:
  /// Throws `Failure` if the file cannot be read. A document that does not load is one with findings.
  explicit Subject(const std::string& file) : m_file(file) {
    const InputFile input(file);
    constexpr std::int64_t all = -1;
    m_review.reset(ztCAD_reviewFile(input.path().c_str(), all, &m_outcome));
    if (!m_review) throw std::bad_alloc();
    if (isFileProblem(m_outcome.code)) throw Failure(file + ": " + problemOf(m_outcome));
    m_document.reset(ztCAD_takeReviewedDocument(m_review.get()));
    if (m_document) open();
    m_findings.emplace(m_review.get(), m_elements, m_scene.get(), bytesOf(input.path()));
  }

  /// Its name without folders.
  std::string name() const {
    return m_file == standardStream ? "standard input" : pathOf(m_file).filename().u8string();
  }
  const ztCAD_Outcome& outcome() const { return m_outcome; }
  ztCAD_GMDDocument* document() const { return m_document.get(); }
  const ztCADInspect_Scene* scene() const { return m_scene.get(); }
  const ztCADInspect_MassTable* masses() const { return m_masses.get(); }
  const ElementList& elements() const { return m_elements; }
  const FindingList& findings() const { return *m_findings; }
  const ShapeList& shapes() const { return *m_shapes; }

 private:
  void open() {
    ztCADInspect_Options options;
    ztCADInspect_initOptions(&options, sizeof options);
    options.threads = 0;
    m_scene = openScene(m_document.get(), m_file, &options);
    m_masses.reset(ztCADInspect_openMassTable(m_scene.get()));
    if (!m_masses) throw std::bad_alloc();
    m_elements = ElementList(m_document.get());
    m_shapes.emplace(m_scene.get());
  }

  std::string m_file;
  ztCAD_Outcome m_outcome{};
  std::unique_ptr<ztCAD_Review, EndReview> m_review;
  LoadedDocument m_document;
  OpenScene m_scene;
  std::unique_ptr<ztCADInspect_MassTable, EndMassTable> m_masses;
  ElementList m_elements;
  std::optional<ShapeList> m_shapes;
  std::optional<FindingList> m_findings;
};

/// docs/view-page.schema.json describes the form.
class DocumentJson {
 public:
  DocumentJson(const Subject& subject, OutputFile& file) : m_subject(subject), m_json(file) {}

  void write() {
    writeHead();
    m_json.raw(",\n");
    writeScene(m_json, m_subject.scene(), m_subject.elements(),
               m_subject.document() ? &m_subject.shapes() : nullptr);
    m_json.raw(",\n\"elements\":{");
    writeElementColumns(m_json, m_subject.elements());
    m_json.raw(",\n\"mass\":{");
    writeMasses();
    m_json.raw("}},\n");
    writeFindings();
    m_json.raw("}");
  }

 private:
  void writeHead() {
    const ztCAD_Outcome& outcome = m_subject.outcome();
    ordered_json head{{"schema", reportSchema},
                      {"tool", {{"name", "ztcad"}, {"version", ztCADVersion()}}},
                      {"file", m_subject.name()},
                      {"code", outcome.code},
                      {"fault", outcome.fault}};
    head["problem"] = m_subject.document() ? ordered_json() : ordered_json(problemOf(outcome));
    head["header"] = headerJson();
    m_json.raw("{");
    const char* separator = "";
    for (const auto& [name, value] : head.items()) {
      m_json.raw(separator);
      m_json.string(name);
      m_json.raw(":");
      m_json.json(value);
      separator = ",\n";
    }
  }

  ordered_json headerJson() const {
    ordered_json lines = ordered_json::array();
    if (!m_subject.document()) return lines;
    const Header header = summarise(m_subject.document()).header;
    const auto number = [](const std::optional<std::uint32_t>& value) {
      return value ? std::to_string(*value) : std::string("?");
    };
    lines.push_back({"version", number(header.majorVersion) + "." + number(header.minorVersion)});
    if (header.inform && !header.inform->empty()) lines.push_back({"inform", *header.inform});
    return lines;
  }

  /// A member for each element that has a row in the table.
  void writeMasses() {
    const ztCADInspect_MassRow* const rows = ztCADInspect_massRows(m_subject.masses());
    const char* separator = "\"";
    for (std::int64_t i = 0; i < ztCADInspect_massRowCount(m_subject.masses()); ++i) {
      const ztCADInspect_MassRow& row = rows[i];
      const std::int64_t element = m_subject.elements().find(row.element);
      if (element == ElementList::none) continue;
      const std::string reason = row.reason;
      ordered_json object{{"declared", declaredJson(row)}, {"computed", computedJson(row)}};
      object["reason"] = reason.empty() ? ordered_json() : ordered_json(reason);
      m_json.raw(separator);
      m_json.raw(std::to_string(element) + "\":");
      m_json.json(object);
      separator = ",\n\"";
    }
  }

  void writeFindings() {
    const FindingList& list = m_subject.findings();
    std::set<std::string> rules;
    m_json.column("findings", list.findings(), [&](const ShownFinding& shown) {
      rules.insert(shown.finding.rule);
      m_json.json(jsonOf(shown));
    });
    ordered_json sentences = ordered_json::object();
    for (const std::string& rule : rules)
      if (const RuleDescription* const description = findRule(rule)) sentences[rule] = description->sentence;
    m_json.raw(",\n\"omitted\":");
    m_json.integer(list.omitted());
    m_json.raw(",\n\"rules\":");
    m_json.json(sentences);
  }

  static ordered_json jsonOf(const ShownFinding& shown) {
    ordered_json object = findingJson(shown.finding);
    object["index"] = shown.element;
    if (!shown.spots.empty()) object["spots"] = shown.spots;
    ordered_json& text = object["text"] = ordered_json::array();
    for (const SourceLine& line : shown.lines) {
      text.push_back({line.number, line.text});
      if (line.skipped > 0) text.back().push_back(line.skipped);
    }
    return object;
  }

  const Subject& m_subject;
  JsonWriter m_json;
};

void writeMeshes(const gltf::CompressedMeshes& meshes, OutputFile& file) {
  file.write("<script type=\"application/octet-stream\" id=\"ztcad-scene\">");
  Base85 text(file);
  meshes.write([&](std::string_view bytes) { text.write(bytes); });
  text.finish();
  file.write("</script>");
}

}  // namespace

ExitCode viewWith(const ViewOptions& options, std::string_view page) {
  std::error_code ignored;
  if (std::filesystem::equivalent(pathOf(options.file), pathOf(options.output), ignored))
    throw UsageError("the page would replace the document");
  const PageText text(page);
  const Subject subject(options.file);
  OutputFile file(options.output);
  file.write(text.beforeTitle());
  file.write(htmlText(subject.name()));
  file.write(text.beforeDocument());
  file.write("<script type=\"application/json\" id=\"ztcad-document\">");
  DocumentJson(subject, file).write();
  file.write("</script>");
  file.write(text.beforeScene());
  if (subject.document() && !subject.shapes().meshes().isEmpty())
    writeMeshes(subject.shapes().meshes(), file);
  file.write(text.end());
  file.commit();
  const ztCAD_Outcome& outcome = subject.outcome();
  const bool isWell = outcome.code == ztCAD_ResultLoaded && !outcome.fault && !subject.findings().hasErrors();
  return isWell ? ExitCode::Good : ExitCode::NotWell;
}

}  // namespace cli
