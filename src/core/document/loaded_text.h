#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <utility>

#include "../../xml/plain_xml.h"
#include "../../xml/xml_parse.h"

namespace ztcad {

/// The text that a document was loaded from. Its tree is built on first use: a tree takes many times the
/// memory of the text, and most hosts never need it.
class LoadedText {
 public:
  /// Nothing was loaded: an empty tree.
  LoadedText() : m_hasTree(true) {}
  LoadedText(QByteArray bytes, XmlBytes kind) : m_bytes(std::move(bytes)), m_kind(kind) {}

  const QDomDocument& tree() const;

 private:
  mutable QByteArray m_bytes;  // empty once the tree is built
  XmlBytes m_kind = XmlBytes::AsDeclared;
  mutable QDomDocument m_tree;
  mutable bool m_hasTree = false;
};

/// Parses bytes into a tree with `parseXml`; `kind` selects how they are decoded.
ParseOutcome parseBytes(const QByteArray& bytes, XmlBytes kind, QDomDocument& tree);

}  // namespace ztcad
