#pragma once

#include <cstdint>
#include <optional>

#include "../node.h"
#include "../state.h"

/// @file
/// The header of a document.

/// Information about a document and the program that wrote it. Every field is optional.
class ZTCAD_API ztCAD_HeaderNode : public ztCAD_INode {
 public:
  /// Every field absent.
  ztCAD_HeaderNode() = default;
  /// With "inform" alone.
  explicit ztCAD_HeaderNode(const QString& inform) : m_inform(inform) {}

  /// The state of the document. Not in the file: reading a header without both versions sets it to "error".
  /// @{
  const ztCAD_State& state() const { return m_state; }
  void setState(const ztCAD_State& state) { m_state = state; }
  /// @}

  /// The document's version: two numbers that the library does not interpret.
  /// @{
  std::optional<std::uint32_t> majorVersion() const { return m_majorVersion; }
  void setMajorVersion(std::optional<std::uint32_t> version) { m_majorVersion = version; }
  std::optional<std::uint32_t> minorVersion() const { return m_minorVersion; }
  void setMinorVersion(std::optional<std::uint32_t> version) { m_minorVersion = version; }
  /// @}

  /// Free text about the document.
  /// @{
  const std::optional<QString>& inform() const { return m_inform; }
  void setInform(const std::optional<QString>& inform) { m_inform = inform; }
  /// @}

  /// The program that wrote the document: its name, its version, its platform. Written, but not read back.
  /// @{
  const std::optional<QString>& producerName() const { return m_producerName; }
  void setProducerName(const std::optional<QString>& name) { m_producerName = name; }
  const std::optional<QString>& producerVersion() const { return m_producerVersion; }
  void setProducerVersion(const std::optional<QString>& version) { m_producerVersion = version; }
  const std::optional<QString>& producerPlatform() const { return m_producerPlatform; }
  void setProducerPlatform(const std::optional<QString>& platform) { m_producerPlatform = platform; }
  /// @}

  /// "Header( inform=... , majorVersion=1 , minorVersion=0 ) state=no Value". For the versions it prints
  /// whether they are present (1 or 0), not their numbers: programs that parse these texts expect that.
  QString toText() const;

  /// The element "header" with the fields that are present.
  void write(ztcad::ElementSink& parent) const override;
  /// Reads the versions and "inform"; an absent or bad one leaves the field unchanged. The producer is not
  /// read: the next program that writes the document sets its own. Always true; a missing version is shown by
  /// the state.
  bool read(const ztcad::ElementView& element, bool& fault) override;

 private:
  ztCAD_State m_state;
  std::optional<std::uint32_t> m_majorVersion;
  std::optional<std::uint32_t> m_minorVersion;
  std::optional<QString> m_inform;
  std::optional<QString> m_producerName;
  std::optional<QString> m_producerVersion;
  std::optional<QString> m_producerPlatform;
};
