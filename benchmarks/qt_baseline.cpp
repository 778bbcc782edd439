#include "qt_baseline.h"

#include <QDomDocument>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

#include "qt_numbers.h"

namespace benchmarks {

namespace {

bool parse(const Document& document, QDomDocument& tree) {
  QFile file(QString::fromStdString(document.file));
  return file.open(QIODevice::ReadOnly) && tree.setContent(&file);
}

void readPoint(const QDomElement& element, QtPoint& point) {
  point.name = element.attribute(QLatin1String("name"));
  point.comment = element.attribute(QLatin1String("comment"));
  point.inform = element.attribute(QLatin1String("inform"));
  point.color = element.attribute(QLatin1String("color"));
  const std::vector<double> center = qtReals(element.attribute(QLatin1String("center")));
  if (center.size() != 3) return;
  point.x = center[0];
  point.y = center[1];
  point.z = center[2];
}

void readPoints(const QDomElement& parent, std::list<QtPoint>& points) {
  for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
    const QString tag = child.tagName();
    if (tag == QLatin1String("structure"))
      readPoints(child, points);
    else if (tag != QLatin1String("header"))
      readPoint(child, points.emplace_back());
  }
}

// ---------------------------------------------------------------------------------------------------- saving

QDomElement beginDocument(QDomDocument& tree) {
  tree.appendChild(tree.createProcessingInstruction(
      QLatin1String("xml"), QLatin1String("version=\"1.0\" encoding=\"windows-1251\"")));
  QDomElement root = tree.createElement(QLatin1String("GMD"));
  tree.appendChild(root);
  QDomElement header = tree.createElement(QLatin1String("header"));
  header.setAttribute(QLatin1String("majorVersion"), 2);
  header.setAttribute(QLatin1String("minorVersion"), 1);
  header.setAttribute(QLatin1String("inform"), QLatin1String("benchmark"));
  root.appendChild(header);
  return root;
}

void appendList(QDomDocument& tree, QDomElement& parent, QLatin1String tag, const QString& text) {
  QDomElement list = tree.createElement(tag);
  list.appendChild(tree.createTextNode(text));
  parent.appendChild(list);
}

QDomElement element(QDomDocument& tree, QLatin1String tag, const QString& name) {
  QDomElement created = tree.createElement(tag);
  created.setAttribute(QLatin1String("name"), name);
  created.setAttribute(QLatin1String("comment"), QString());
  created.setAttribute(QLatin1String("inform"), QString());
  created.setAttribute(QLatin1String("color"), QString());
  return created;
}

QDomElement element(QDomDocument& tree, const QtPoint& point) {
  QDomElement created = element(tree, QLatin1String("point"), point.name);
  created.setAttribute(QLatin1String("method"), QLatin1String("pointXYZ"));
  created.setAttribute(QLatin1String("center"), qtNumber(point.x) + QLatin1String(", ") + qtNumber(point.y) +
                                                    QLatin1String(", ") + qtNumber(point.z) +
                                                    QLatin1Char(';'));
  return created;
}

bool save(const QDomDocument& tree, const std::string& name) {
  constexpr int indent = 3;
  QSaveFile file(QString::fromStdString(name));
  if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) return false;
  QTextStream stream(&file);
  tree.save(stream, indent);
  stream.flush();
  return file.commit();
}

}  // namespace

bool qtLoad(const Document& document, Mesh& mesh) {
  QDomDocument tree;
  if (!parse(document, tree)) return false;
  const QDomElement solid = tree.documentElement().firstChildElement(QLatin1String("solid"));
  mesh.coordinates = qtReals(solid.firstChildElement(QLatin1String("vertices")).text());
  mesh.indices = qtIndices(solid.firstChildElement(QLatin1String("faces")).text());
  return mesh.coordinates.size() == 3 * document.size && mesh.indices.size() == 6 * document.size;
}

bool qtLoad(const Document& document, std::list<QtPoint>& points) {
  QDomDocument tree;
  if (!parse(document, tree)) return false;
  readPoints(tree.documentElement(), points);
  return points.size() == document.size;
}

bool qtSave(const Mesh& mesh, const std::string& file) {
  QDomDocument tree;
  QDomElement root = beginDocument(tree);
  QDomElement solid = element(tree, QLatin1String("solid"), QLatin1String("part"));
  solid.setAttribute(QLatin1String("method"), QLatin1String("triangulation"));
  appendList(tree, solid, QLatin1String("vertices"), qtText(mesh.coordinates));
  appendList(tree, solid, QLatin1String("faces"), qtText(mesh.indices));
  root.appendChild(solid);
  return save(tree, file);
}

bool qtSave(const std::list<QtPoint>& points, Shape shape, const std::string& file) {
  QDomDocument tree;
  const QDomElement root = beginDocument(tree);
  QDomElement parent = root;
  std::size_t inParent = 0;
  for (const QtPoint& point : points) {
    if (shape == Shape::Structures && inParent++ % pointsInStructure == 0) {
      parent = element(tree, QLatin1String("structure"), QString::number(inParent));
      tree.documentElement().appendChild(parent);
    }
    parent.appendChild(element(tree, point));
  }
  return save(tree, file);
}

}  // namespace benchmarks
