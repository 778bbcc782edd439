// Arbitrary attributes of an element, one per line ("name=value"). Each class reads them, is written, read
// back and written again. The first write may add defaults for missing attributes; later ones must not change
// anything.

#include <algorithm>
#include <QDomDocument>
#include <QMap>
#include <string>
#include <type_traits>

#include "fuzzing.h"
#include "ztCAD.h"

namespace {

using fuzzing::require;

/// An element with the document that owns it.
struct Holder {
  QDomDocument document;
  QDomElement element = document.createElement(QLatin1String("holder"));
  Holder() { document.appendChild(element); }
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;
};

void setAttributes(std::string_view bytes, QDomElement& element) {
  while (!bytes.empty()) {
    const std::string line(bytes.substr(0, bytes.find('\n')));
    bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
    const std::size_t name = line.find('=');
    if (name != std::string::npos)
      element.setAttribute(QString::fromStdString(line.substr(0, name)),
                           QString::fromStdString(line.substr(name + 1)));
  }
}

/// The element as text with its attributes sorted, so that equal elements have equal texts.
QString textOf(const QDomElement& element) {
  QMap<QString, QString> attributes;
  for (int i = 0; i < element.attributes().count(); ++i)
    attributes.insert(element.attributes().item(i).nodeName(), element.attributes().item(i).nodeValue());
  QString text = element.tagName();
  for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute)
    text += QLatin1Char('\n') + attribute.key() + QLatin1Char('=') + attribute.value();
  for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
    text += QLatin1String("\n(") + textOf(child) + QLatin1Char(')');
  return text;
}

/// Reads an object of the class from `source` and writes it into `holder`. Returns the element written: the
/// object's own, or the holder's for a class without an element of its own.
template <typename Class>
QDomElement readAndWrite(const QDomElement& source, Holder& holder) {
  Class object;
  bool fault = true;
  object.readXml(source, fault);
  object.writeXml(holder.element, holder.document);
  if constexpr (std::is_base_of_v<ztCAD_ISerialize, Class> &&
                std::is_convertible_v<Class*, ztCAD_ISerialize*>) {
    QString text;
    object.toText(text, false);
    object.toText(text, true);
  }
  const QDomElement own = holder.element.firstChildElement();
  return own.isNull() ? holder.element : own;
}

template <typename Class>
void checkRoundTrip(const QDomElement& source) {
  Holder first;
  Holder second;
  Holder third;
  const QDomElement completed = readAndWrite<Class>(source, first);
  const QDomElement written = readAndWrite<Class>(completed, second);
  const QDomElement writtenAgain = readAndWrite<Class>(written, third);
  require(textOf(written) == textOf(writtenAgain), "reading and writing again does not change an element");
}

template <typename... Classes>
void checkRoundTrips(const QDomElement& source) {
  (checkRoundTrip<Classes>(source), ...);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Holder source;
  setAttributes(fuzzing::bytesOf(data, size), source.element);
  checkRoundTrips<ztCAD_gAttr, ztCAD_gMethod, ztCAD_gArche, ztCAD_Color, ztCAD_Visible, ztCAD_gShowable,
                  ztCAD_LCS, ztCAD_cmnProperty, ztCAD_MIP, ztCAD_HeaderNode>(source.element);
  checkRoundTrips<ztCAD_Point, ztCAD_TmplPoint, ztCAD_Line, ztCAD_Triangle, ztCAD_Sphere, ztCAD_ElementMIP,
                  ztCAD_Detail, ztCAD_Structure>(source.element);
  checkRoundTrips<ztCAD_PointRef, ztCAD_LineRef, ztCAD_TriangleRef, ztCAD_ElementMipRef, ztCAD_DetailRef,
                  ztCAD_StructureRef>(source.element);
  return 0;
}
