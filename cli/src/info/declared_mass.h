#pragma once

#include <ztCAD/ztCAD_c.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace cli {

/// The mass that elements declare.
struct DeclaredMass {
  double total = 0;
  std::int64_t elements = 0;    // that declare a mass; one that is placed several times counts each time
  std::int64_t unresolved = 0;  // references whose template is not in the document

  DeclaredMass& operator+=(const DeclaredMass& other);
};

/// Sums the declared mass of a document. The data of a detail covers its whole content; the elements of a
/// detail without data count themselves. A template counts where a reference places it.
class MassSum {
 public:
  explicit MassSum(ztCAD_GMDDocument* document);

  const DeclaredMass& result() const { return m_result; }

 private:
  template <typename Holder>
  DeclaredMass massIn(Holder* holder);
  DeclaredMass massOf(ztCAD_Base* element);
  DeclaredMass massOfTemplate(ztCAD_Base* reference, std::int32_t templateKind);

  using Key = std::pair<std::int32_t, std::string>;  // kind and name
  std::map<Key, ztCAD_Base*> m_templates;
  std::map<Key, DeclaredMass> m_known;  // while it is computed, that of a ring of references
  DeclaredMass m_result;
};

}  // namespace cli
