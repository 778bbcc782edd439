#pragma once

#include <QString>

#include "../support/export.h"

class QDomDocument;
class QDomElement;

/// @file
/// What all objects of a document have in common: they are told as text, written and read.

/// What the rooms of the library offer each other: not exported, and no promise to hosts.
namespace ztcad {
class ElementSink;
class ElementView;
}  // namespace ztcad

/// Something that can be told in one line of text.
class ZTCAD_API ztCAD_ISerialize {
 public:
  virtual ~ztCAD_ISerialize();

  /// Appends the object's text to `out` and returns `out`.
  ///
  /// @param out       text that grows at its end
  /// @param debugForm false: the storage form, the compact text that stands in attribute values and text
  ///                  nodes of a file; true: the form for people. Classes that have one form only ignore it.
  virtual QString& toText(QString& out, bool debugForm) const = 0;

 protected:
  ztCAD_ISerialize() = default;
  ztCAD_ISerialize(const ztCAD_ISerialize&) = default;
  ztCAD_ISerialize& operator=(const ztCAD_ISerialize&) = default;
};

/// Something that writes itself as XML and reads itself back.
///
/// Elements, references, structures and the header have an XML element of their own. Property classes
/// (attributes, method, colour, coordinate system, ...) and the mass-inertia record have none: they put their
/// attributes onto the element that they are given and take them from it.
class ZTCAD_API ztCAD_INode {
 public:
  virtual ~ztCAD_INode();

  /// Appends the object's element to `parent` (a property class: sets its attributes on `parent`).
  ///
  /// @param parent   the element around; stays the caller's
  /// @param document the document that `parent` belongs to; makes the new nodes
  /// @return `parent`
  virtual QDomElement& writeXml(QDomElement& parent, QDomDocument& document) const;

  /// Fills the object from `element`, the object's own element.
  ///
  /// @param fault output; each class says what it puts there
  /// @return true when the element was taken. A failed read keeps all that could be read.
  virtual bool readXml(const QDomElement& element, bool& fault);

  /// The same two through any carrier of XML. Here each class describes itself, once; hosts call the two
  /// above.
  /// @{
  virtual void write(ztcad::ElementSink& parent) const = 0;
  virtual bool read(const ztcad::ElementView& element, bool& fault) = 0;
  /// @}

 protected:
  ztCAD_INode() = default;
  ztCAD_INode(const ztCAD_INode&) = default;
  ztCAD_INode& operator=(const ztCAD_INode&) = default;
};

/// Something whose element can be examined. Geometric elements and details read and validate themselves in
/// this operation; the descriptive attributes only look whether what they need is there.
class ZTCAD_API ztCAD_IBaseChecker {
 public:
  virtual ~ztCAD_IBaseChecker();

  /// Examines `element`, the object's own element.
  ///
  /// @param fault output, false after the call
  /// @return true when the element holds what the object needs
  virtual bool readAndCheck(const ztcad::ElementView& element, bool& fault) = 0;

 protected:
  ztCAD_IBaseChecker() = default;
  ztCAD_IBaseChecker(const ztCAD_IBaseChecker&) = default;
  ztCAD_IBaseChecker& operator=(const ztCAD_IBaseChecker&) = default;
};

/// Remembers how the last read of an object went.
class ZTCAD_API ztCAD_StateCorrect {
 public:
  virtual ~ztCAD_StateCorrect();

  /// Outcome of the last read; false for an object that was never read.
  bool readOk() const { return m_readOk; }
  /// Whether the object was read at all: tells "read and found wrong" from "built by a host".
  bool wasRead() const { return m_wasRead; }
  /// Keeps the outcome of a read; from now on the object counts as read.
  void setReadOk(bool readOk);

 protected:
  ztCAD_StateCorrect() = default;
  /// For the class whose state is good before any read.
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
  virtual ~ztCAD_INameLCS_Selector();

  /// "LCS" for instances, "MCS" for templates.
  virtual QString lcsWord() const = 0;
  /// The tag of the object's XML element.
  virtual QString elementName() const = 0;

 protected:
  ztCAD_INameLCS_Selector() = default;
  ztCAD_INameLCS_Selector(const ztCAD_INameLCS_Selector&) = default;
  ztCAD_INameLCS_Selector& operator=(const ztCAD_INameLCS_Selector&) = default;
};
