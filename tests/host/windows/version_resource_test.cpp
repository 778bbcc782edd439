// The version that Windows shows in the file properties of the library.

#include <gtest/gtest.h>
#include <windows.h>
#include <string>
#include <vector>

#include "../loaded_library.h"

namespace {

class VersionResource : public testing::Test {
 protected:
  void SetUp() override {
    DWORD ignored = 0;
    m_data.resize(GetFileVersionInfoSizeA(LoadedLibrary::path(), &ignored));
    ASSERT_FALSE(m_data.empty()) << "no version resource";
    ASSERT_TRUE(
        GetFileVersionInfoA(LoadedLibrary::path(), 0, static_cast<DWORD>(m_data.size()), m_data.data()));
  }

  void* value(const std::string& path, unsigned& size) const {
    void* found = nullptr;
    if (!VerQueryValueA(m_data.data(), path.c_str(), &found, &size)) return nullptr;
    return found;
  }

  std::string text(const std::string& name) const {
    unsigned size = 0;
    const void* const found = value("\\StringFileInfo\\040904B0\\" + name, size);
    return found ? static_cast<const char*>(found) : "(absent)";
  }

 private:
  std::vector<char> m_data;
};

TEST_F(VersionResource, ContainsTheVersionAsText) {
  EXPECT_EQ(text("FileVersion"), ZTCAD_EXPECTED_VERSION);
  EXPECT_EQ(text("ProductVersion"), ZTCAD_EXPECTED_VERSION);
  EXPECT_EQ(text("ProductName"), "ztCAD");
  EXPECT_EQ(text("OriginalFilename"), "ztCAD.dll");
}

TEST_F(VersionResource, ContainsTheVersionAsNumbers) {
  unsigned size = 0;
  const auto* const info = static_cast<const VS_FIXEDFILEINFO*>(value("\\", size));
  ASSERT_NE(info, nullptr);
  const auto numbers = std::to_string(HIWORD(info->dwFileVersionMS)) + '.' +
                       std::to_string(LOWORD(info->dwFileVersionMS)) + '.' +
                       std::to_string(HIWORD(info->dwFileVersionLS));
  EXPECT_EQ(numbers, ZTCAD_EXPECTED_VERSION);
  EXPECT_EQ(info->dwProductVersionMS, info->dwFileVersionMS);
  EXPECT_EQ(info->dwProductVersionLS, info->dwFileVersionLS);
}

}  // namespace
