#include "shared_methods.h"

#include <cstddef>
#include <new>

#include "../core/vocabulary.h"
#include "../text/wide_utf8.h"
#include "method.h"

namespace ztcad {

constexpr std::size_t wordCount = 6;

/// Objects without destructors: elements of the host may exist longer than the static objects of the library.
class SharedMethods {
 public:
  const ztCAD_gMethod* begin() const { return std::launder(reinterpret_cast<const ztCAD_gMethod*>(m_bytes)); }
  const ztCAD_gMethod* end() const { return begin() + wordCount; }

  void make() {
    if (m_areMade) return;
    const QString texts[wordCount] = {words().pointXyz, words().polyline, words().triangulation,
                                      words().sphere,   words().mip,      QString()};
    for (std::size_t i = 0; i < wordCount; ++i)
      (new (m_bytes + i * sizeof(ztCAD_gMethod)) ztCAD_gMethod(texts[i]))->m_isShared = true;
    m_areMade = true;
  }

  /// Puts texts of the library's read-only data in the place of those on the heap, for calls that come later.
  void release() {
    if (!m_areMade) return;
    const QString texts[wordCount] = {QStringLiteral("pointXYZ"),      QStringLiteral("polyline"),
                                      QStringLiteral("triangulation"), QStringLiteral("sphere"),
                                      QStringLiteral("MIP"),           QString()};
    for (std::size_t i = 0; i < wordCount; ++i)
      std::launder(reinterpret_cast<ztCAD_gMethod*>(m_bytes) + i)->setMethod(texts[i]);
  }

 private:
  alignas(ztCAD_gMethod) unsigned char m_bytes[wordCount * sizeof(ztCAD_gMethod)] = {};
  bool m_areMade = false;
};

namespace {
SharedMethods sharedMethods;
}

const ztCAD_gMethod* sharedMethod(const QString& word) {
  sharedMethods.make();
  for (const ztCAD_gMethod& method : sharedMethods)
    if (equalsWord(method.method(), word)) return &method;
  return nullptr;
}

void releaseSharedMethods() { sharedMethods.release(); }

}  // namespace ztcad
