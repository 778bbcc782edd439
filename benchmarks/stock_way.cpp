#include "stock_way.h"

#include <QDomDocument>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

#include "stock_numbers.h"

namespace benchmarks {

namespace {

bool parse(const Document& document, QDomDocument& tree) {
  QFile file(QString::fromStdString(document.file));
  return file.open(QIODevice::ReadOnly) && tree.setContent(&file);
}

void readPoint(const QDomElement& element, StockPoint& point) {
  point.name = element.attribute(QLatin1String("name"));
  point.comment = element.attribute(QLatin1String("comment"));
  point.inform = element.attribute(QLatin1String("inform"));
  point.color = element.attribute(QLatin1String("color"));
  const std::vector<double> centre = stockReals(element.attribute(QLatin1String("center")));
  if (centre.size() != 3) return;
  point.x = centre[0];
  point.y = centre[1];
  point.z = centre[2];
}

void readPoints(const QDomElement& parent, std::list<StockPoint>& points) {
  for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
    const QString tag = child.tagName();
    if (tag == QLatin1String("structure"))
      readPoints(child, points);
    else if (tag != QLatin1String("header"))
      readPoint(child, points.emplace_back());
  }
}

// -------------------------------------------------------------------------------- saving

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
  QDomElement made = tree.createElement(tag);
  made.setAttribute(QLatin1String("name"), name);
  made.setAttribute(QLatin1String("comment"), QString());
  made.setAttribute(QLatin1String("inform"), QString());
  made.setAttribute(QLatin1String("color"), QString());
  return made;
}

QDomElement element(QDomDocument& tree, const StockPoint& point) {
  QDomElement made = element(tree, QLatin1String("point"), point.name);
  made.setAttribute(QLatin1String("method"), QLatin1String("pointXYZ"));
  made.setAttribute(QLatin1String("center"), stockNumber(point.x) + QLatin1String(", ") +
                                                 stockNumber(point.y) + QLatin1String(", ") +
                                                 stockNumber(point.z) + QLatin1Char(';'));
  return made;
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

bool stockLoad(const Document& document, Mesh& mesh) {
  QDomDocument tree;
  if (!parse(document, tree)) return false;
  const QDomElement solid = tree.documentElement().firstChildElement(QLatin1String("solid"));
  mesh.coordinates = stockReals(solid.firstChildElement(QLatin1String("vertices")).text());
  mesh.indices = stockIndices(solid.firstChildElement(QLatin1String("faces")).text());
  return mesh.coordinates.size() == 3 * document.size && mesh.indices.size() == 6 * document.size;
}

bool stockLoad(const Document& document, std::list<StockPoint>& points) {
  QDomDocument tree;
  if (!parse(document, tree)) return false;
  readPoints(tree.documentElement(), points);
  return points.size() == document.size;
}

bool stockSave(const Mesh& mesh, const std::string& file) {
  QDomDocument tree;
  QDomElement root = beginDocument(tree);
  QDomElement solid = element(tree, QLatin1String("solid"), QLatin1String("part"));
  solid.setAttribute(QLatin1String("method"), QLatin1String("triangulation"));
  appendList(tree, solid, QLatin1String("vertices"), stockText(mesh.coordinates));
  appendList(tree, solid, QLatin1String("faces"), stockText(mesh.indices));
  root.appendChild(solid);
  return save(tree, file);
}

bool stockSave(const std::list<StockPoint>& points, Shape shape, const std::string& file) {
  QDomDocument tree;
  const QDomElement root = beginDocument(tree);
  QDomElement parent = root;
  std::size_t inParent = 0;
  for (const StockPoint& point : points) {
    if (shape == Shape::Structures && inParent++ % pointsInStructure == 0) {
      parent = element(tree, QLatin1String("structure"), QString::number(inParent));
      tree.documentElement().appendChild(parent);
    }
    parent.appendChild(element(tree, point));
  }
  return save(tree, file);
}

}  // namespace benchmarks
