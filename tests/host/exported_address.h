#pragma once

/// The address of an exported symbol, convertible to a reference to any function type.
class ExportedAddress {
 public:
  explicit ExportedAddress(void* address) : m_address(address) {}

  template <typename Function>
  operator Function&() const {
    return *reinterpret_cast<Function*>(m_address);
  }

 private:
  void* m_address;
};
