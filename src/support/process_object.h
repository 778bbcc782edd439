#pragma once

namespace ztcad {

/// An object of which the process has one: made on first use, taken down by the library's unload step.
///
/// A holder at namespace scope needs no constructor and no destructor call, so nothing depends on the order
/// in which static objects of the library and of its host come and go: who asks too early or too late gets a
/// new, empty one.
template <typename T>
class ProcessObject {
 public:
  constexpr ProcessObject() = default;
  ProcessObject(const ProcessObject&) = delete;
  ProcessObject& operator=(const ProcessObject&) = delete;
  // no destructor on purpose: see above

  T& get() {
    if (!m_object) m_object = new T;
    return *m_object;
  }

  void release() {
    T* object = m_object;
    m_object = nullptr;  // first: the object's destructor may come back here
    delete object;
  }

 private:
  T* m_object = nullptr;
};

}  // namespace ztcad
