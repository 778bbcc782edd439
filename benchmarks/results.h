#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "documents.h"
#include "measurement.h"

namespace benchmarks {

/// How a row appears in the memory table.
enum class MemoryKind { NotReported, Load, Save };

/// One measured case: the library and, where they exist, the Qt baseline and the reference implementation.
struct Row {
  std::string name;
  std::size_t size = 0;       // vertices, points, references or elements
  double bytes = 0;           // of the file; 0 if there is none
  double referenceBytes = 0;  // of the file of the reference, if it reads another one
  MemoryKind memory = MemoryKind::NotReported;
  Measurement library;
  std::optional<Measurement> qt;
  std::optional<Measurement> reference;
};

/// The forms of XML that loads are measured in, each compared with the plain form.
struct FormName {
  Form form;
  const char* suffix;  // of the name of the case
};
inline constexpr FormName forms[] = {
    {Form::DocumentType, " with a document type (reference: plain)"},
    {Form::Comments, " with comments everywhere (reference: plain)"},
    {Form::Cdata, " with CDATA everywhere (reference: plain)"},
    {Form::Instructions, " with instructions everywhere (reference: plain)"},
    {Form::CdataAtTheEnd, " with CDATA at the end (reference: plain)"},
    {Form::Utf16, " from UTF-16 (reference: plain)"},
};

/// The implementations of one case; an empty function is not run.
struct Implementations {
  std::function<Measurement()> library;
  std::function<Measurement()> qt;
  std::function<Measurement()> reference;
};

/// Runs the implementations in turn, several times each, so that a busy moment of the machine does not hit
/// only one of them, and keeps the fastest run of each. An implementation that takes long is not repeated.
/// Throws if a run did not succeed.
Row measure(const std::string& name, const Implementations& implementations);

class Results {
 public:
  void add(const Row& row) { m_rows.push_back(row); }
  const std::vector<Row>& rows() const { return m_rows; }
  /// The row of this name with the `rank`-th largest size (0: the largest); null if there is none.
  const Row* largest(const std::string& name, std::size_t rank = 0) const;

 private:
  std::vector<Row> m_rows;  // rows of one name in ascending order of size
};

}  // namespace benchmarks
