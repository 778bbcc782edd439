#pragma once

namespace ztcad {

/// An object of which the process has one, created on first use and destroyed by the library's unload step.
///
/// A holder at namespace scope runs no constructor and no destructor, so nothing depends on the order in
/// which static objects of the library and of its host are initialised and destroyed: a use that comes too
/// early or too late gets a new, empty object. Not synchronised.
template <typename T>
class ProcessObject {
 public:
  constexpr ProcessObject() = default;
  ProcessObject(const ProcessObject&) = delete;
  ProcessObject& operator=(const ProcessObject&) = delete;
  // deliberately no destructor: see above

  T& get() {
    if (!m_object) m_object = new T;
    return *m_object;
  }

  /// Whether it was created and not released since.
  bool exists() const { return m_object != nullptr; }

  void release() {
    T* object = m_object;
    m_object = nullptr;  // first: the destructor may call back
    delete object;
  }

 private:
  T* m_object = nullptr;
};

}  // namespace ztcad
