#include "shared_methods.h"

#include <cstddef>
#include <functional>
#include <new>

#include "../core/vocabulary.h"
#include "method.h"

namespace ztcad {

namespace {

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
      new (m_bytes + i * sizeof(ztCAD_gMethod)) ztCAD_gMethod(texts[i]);
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

SharedMethods sharedMethods;

}  // namespace

const ztCAD_gMethod* sharedMethod(const QString& word) {
  sharedMethods.make();
  for (const ztCAD_gMethod& method : sharedMethods)
    if (method.method() == word) return &method;
  return nullptr;
}

bool isSharedMethod(const ztCAD_gMethod* method) {
  const std::less<> isBefore;
  return !isBefore(method, sharedMethods.begin()) && isBefore(method, sharedMethods.end());
}

void releaseSharedMethods() { sharedMethods.release(); }

}  // namespace ztcad
