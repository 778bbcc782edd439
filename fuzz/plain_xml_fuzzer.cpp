// The reader of plain XML beside the tree that QtXml makes of the same bytes: what the one takes, the other takes too, and
// both show the same elements, attributes and texts.

#include <QDomDocument>
#include <QStringList>

#include "xml/dom_backend.h"
#include "xml/plain_xml.h"
#include "xml/xml_parse.h"
#include "fuzzing.h"

namespace {

using fuzzing::require;
using ztcad::ElementView;

/// What a carrier shows, on the way that the tree tells: which elements hold children, which hold text.
void tell(const ElementView& element, const QDomElement& guide, QString& told) {
  told += QLatin1Char('<') + element.tag();
  QStringList names;
  for (int i = 0; i < guide.attributes().count(); ++i)
    names += guide.attributes().item(i).nodeName();
  names.sort();
  for (const QString& name : names) {
    const auto text = element.attributeText(name);
    const QString value = element.attribute(name).value_or(QLatin1String("(absent)"));
    require(text && text->toString() == value, "both forms of an attribute are the same");
    told += QLatin1Char(' ') + name + QLatin1Char('=') + value;
  }
  told += QLatin1Char('>');
  QDomElement child = guide.firstChildElement();
  if (child.isNull()) {
    // between the numbers of a list every blank is as good as any other
    told += element.text()
                .toString()
                .replace(QLatin1String("\r\n"), QLatin1String("\n"))
                .replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return;
  }
  element.forEachChild([&](const ElementView& view) {
    tell(view, child, told);
    child = child.nextSiblingElement();
  });
  require(child.isNull(), "all children are shown");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzzing::bytesOf(data, size);
  if (!ztcad::readPlainXml(bytes, ztcad::XmlBytes::AsDeclared, [](const ElementView&) {})) return 0;

  QDomDocument tree;
  const auto outcome = ztcad::parseXml(QByteArray(bytes.data(), static_cast<int>(size)), tree);
  require(outcome.parsed, "what is plain is well-formed");
  QString byTree;
  tell(ztcad::DomView(tree.documentElement()), tree.documentElement(), byTree);
  QString byBytes;
  const bool isStillPlain =
      ztcad::readPlainXml(bytes, ztcad::XmlBytes::AsDeclared,
                          [&](const ElementView& root) { tell(root, tree.documentElement(), byBytes); });
  require(!isStillPlain || byBytes == byTree, "both ways show the same");
  return 0;
}
