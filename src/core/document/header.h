#pragma once

#include <cstdint>
#include <optional>

#include "../node.h"
#include "../state.h"

/// @file
/// The header of a document.

/// What a document says about itself and about the program that made it. Every field is optional.
class ZTCAD_API ztCAD_HeaderNode : public ztCAD_INode {
 public:
  /// Every field absent.
  ztCAD_HeaderNode() = default;
  /// With "inform" alone.
  explicit ztCAD_HeaderNode(const QString& inform) : m_inform(inform) {}

  /// How the document fares. Not in the file: set to "error" by reading a header without a version.
  /// @{
  const ztCAD_State& state() const { return m_state; }
  void setState(const ztCAD_State& state) { m_state = state; }
  /// @}

  /// The document's version: two numbers that the library compares with nothing.
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

  /// The program that wrote the document: its name, its version, what it ran on. Written, not read back.
  /// @{
  const std::optional<QString>& producerName() const { return m_producerName; }
  void setProducerName(const std::optional<QString>& name) { m_producerName = name; }
  const std::optional<QString>& producerVersion() const { return m_producerVersion; }
  void setProducerVersion(const std::optional<QString>& version) { m_producerVersion = version; }
  const std::optional<QString>& producerPlatform() const { return m_producerPlatform; }
  void setProducerPlatform(const std::optional<QString>& platform) { m_producerPlatform = platform; }
  /// @}

  /// "Header( inform=... , majorVersion=1 , minorVersion=0 ) state=no Value". For the versions it tells
  /// whether they are there (1 or 0), not their numbers: programs that read these texts know it so.
  QString toText() const;

  /// The element "header" with the fields that are present.
  void write(ztcad::ElementSink& parent) const override;
  /// Takes the versions and "inform". The producer is not read: it is for whoever writes the document next to
  /// say. Always true; a missing version shows in the state.
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
