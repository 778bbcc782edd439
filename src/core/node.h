#pragma once

#include <QString>

#include "../support/export.h"
#include "../support/qt_version.h"

class QDomDocument;
class QDomElement;

/// @file
/// The interfaces of document objects: text, XML, and the state of the last read.
///
/// Their destructors are inline: destroying an element calls about ten of them, and out of line they took
/// half of the time of deleting a document of points.

/// Interfaces between the layers of the library: not exported, and subject to change.
namespace ztcad {
class ElementSink;
class ElementView;
}  // namespace ztcad

/// An object with a text form.
class ZTCAD_API ztCAD_ISerialize {
 public:
  virtual ~ztCAD_ISerialize() = default;

  /// Appends the object's text to `out` and returns `out`.
  ///
  /// @param debugForm false: the storage form, the compact text of attribute values and text nodes in a file;
  ///                  true: the diagnostic form. Classes that have one form only ignore it.
  virtual QString& toText(QString& out, bool debugForm) const = 0;

 protected:
  ztCAD_ISerialize() = default;
  ztCAD_ISerialize(const ztCAD_ISerialize&) = default;
  ztCAD_ISerialize& operator=(const ztCAD_ISerialize&) = default;
};

/// An object that is written to and read from XML.
///
/// Elements, references, structures and the header have an XML element of their own. Property classes
/// (attributes, method, colour, coordinate system, ...) and the mass-inertia record have none: they write
/// their attributes to the element that they are given and read them from it.
class ZTCAD_API ztCAD_INode {
 public:
  virtual ~ztCAD_INode() = default;

  /// Appends the object's element to `parent` (a property class: sets its attributes on `parent`).
  ///
  /// @param parent   the parent element; the caller keeps it
  /// @param document the document of `parent`; creates the new nodes
  /// @return `parent`
  virtual QDomElement& writeXml(QDomElement& parent, QDomDocument& document) const;

  /// Fills the object from `element`, the object's own element.
  ///
  /// @param fault output; its meaning is defined by each class
  /// @return true if the element was read. A failed read keeps all parts that could be read.
  virtual bool readXml(const QDomElement& element, bool& fault);

  /// The same through the internal XML interface, for both backends. Each class implements these two; hosts
  /// call the two above.
  /// @{
  virtual void write(ztcad::ElementSink& parent) const = 0;
  virtual bool read(const ztcad::ElementView& element, bool& fault) = 0;
  /// @}

 protected:
  ztCAD_INode() = default;
  ztCAD_INode(const ztCAD_INode&) = default;
  ztCAD_INode& operator=(const ztCAD_INode&) = default;
};

/// An object that can check its element. Geometric elements and details read and validate themselves in this
/// operation; the descriptive attributes only check that the required ones are present.
class ZTCAD_API ztCAD_IBaseChecker {
 public:
  virtual ~ztCAD_IBaseChecker() = default;

  /// Checks `element`, the object's own element.
  ///
  /// @param fault output, false after the call
  /// @return true if the element contains what the object requires
  virtual bool readAndCheck(const ztcad::ElementView& element, bool& fault) = 0;

 protected:
  ztCAD_IBaseChecker() = default;
  ztCAD_IBaseChecker(const ztCAD_IBaseChecker&) = default;
  ztCAD_IBaseChecker& operator=(const ztCAD_IBaseChecker&) = default;
};

/// The outcome of an object's last read.
class ZTCAD_API ztCAD_StateCorrect {
 public:
  virtual ~ztCAD_StateCorrect() = default;

  /// Whether the last read succeeded. Before any read it is true for `ztCAD_gAttr` and false for all other
  /// classes.
  bool readOk() const { return m_readOk; }
  /// Whether the object was read at all; distinguishes a failed read from an object built by a host.
  bool wasRead() const { return m_wasRead; }
  /// Sets the outcome of a read; the object counts as read from then on.
  void setReadOk(bool readOk);

 protected:
  ztCAD_StateCorrect() = default;
  /// With the state before any read.
  explicit ztCAD_StateCorrect(bool readOk) : m_readOk(readOk) {}
  ztCAD_StateCorrect(const ztCAD_StateCorrect&) = default;
  ztCAD_StateCorrect& operator=(const ztCAD_StateCorrect&) = default;

 private:
  bool m_readOk = false;
  bool m_wasRead = false;
};

/// Two constants by which templates and instances of one kind differ.
class ZTCAD_API ztCAD_INameLCS_Selector {
 public:
  virtual ~ztCAD_INameLCS_Selector() = default;

  /// "LCS" for instances, "MCS" for templates.
  virtual QString lcsWord() const = 0;
  /// The tag of the object's XML element.
  virtual QString elementName() const = 0;

 protected:
  ztCAD_INameLCS_Selector() = default;
  ztCAD_INameLCS_Selector(const ztCAD_INameLCS_Selector&) = default;
  ztCAD_INameLCS_Selector& operator=(const ztCAD_INameLCS_Selector&) = default;
};
