#include "file.h"

#include <cerrno>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <stdexcept>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/stat.h>
#endif

namespace ztcad {

namespace {

/// Aborts the writing of a document; caught by `fill`.
struct WriteError : std::runtime_error {
  WriteError() : std::runtime_error("device does not take the bytes") {}
};

class DeviceOutput final : public ByteOutput {
 public:
  explicit DeviceOutput(QIODevice& device) : m_device(device) {}
  void write(std::string_view bytes) override {
    const auto size = static_cast<qint64>(bytes.size());
    if (m_device.write(bytes.data(), size) != size) throw WriteError();
  }

 private:
  QIODevice& m_device;
};

constexpr QIODevice::OpenMode textForWriting = QIODevice::WriteOnly | QIODevice::Text;

bool fill(QIODevice& device, const std::function<void(ByteOutput&)>& write) {
  DeviceOutput output(device);
  try {
    write(output);
  } catch (const WriteError&) {
    return false;
  }
  return true;
}

#if defined(_WIN32)
/// Number of hard links of a file; 0 if it cannot be determined.
DWORD hardLinks(const QString& fileName) {
  const std::wstring name = QDir::toNativeSeparators(fileName).toStdWString();
  constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(name.c_str(), 0, shared, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return 0;
  BY_HANDLE_FILE_INFORMATION information = {};
  const bool known = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return known ? information.nNumberOfLinks : 0;
}
#endif

bool mayBeReplaced(const QString& fileName) {
#if defined(_WIN32)
  const QFileInfo target(fileName);
  return !target.exists() || (target.isFile() && hardLinks(fileName) <= 1);
#else
  struct stat target = {};
  if (::stat(QFile::encodeName(fileName).constData(), &target) != 0) return errno == ENOENT;
  return S_ISREG(target.st_mode) && target.st_nlink == 1;
#endif
}

FileError errorOf(const QFileDevice& file) {
  // a device that takes fewer bytes than requested may report no error
  const auto code = file.error() == QFileDevice::NoError ? QFileDevice::WriteError : file.error();
  return {code, file.errorString()};
}

struct Replacement {
  bool wasRefused = false;  // the system lets no other file take the target's place
  FileError error;
};

Replacement replace(const QString& fileName, const std::function<void(ByteOutput&)>& write) {
  QSaveFile file(fileName);
  errno = 0;
  if (!file.open(textForWriting)) {
    // On a full disk a direct write would fail too, and the earlier file would be lost.
    const bool isFull = errno == ENOSPC;
    return {!isFull, errorOf(file)};
  }
  if (!fill(file, write) || !file.flush()) {  // commit does not report a failure to write the last bytes
    const FileError error = errorOf(file);
    file.cancelWriting();
    return {false, error};
  }
  if (!file.commit()) return {true, errorOf(file)};
  return {};
}

FileError writeDirectly(const QString& fileName, const std::function<void(ByteOutput&)>& write) {
  QFile file(fileName);
  if (file.open(textForWriting) && fill(file, write) && file.flush()) return {};
  return errorOf(file);
}

}  // namespace

FileError writeTextFile(const QString& fileName, const std::function<void(ByteOutput&)>& write) {
  if (fileName.contains(QChar()))  // the system would end the name at the NUL
    return {QFileDevice::OpenError, QLatin1String("the file name holds a NUL character")};
  if (!mayBeReplaced(fileName)) return writeDirectly(fileName, write);
  const Replacement replacement = replace(fileName, write);
  return replacement.wasRefused ? writeDirectly(fileName, write) : replacement.error;
}

FileError readFile(const QString& fileName, QByteArray& bytes) {
  QFile file(fileName);
  if (file.open(QIODevice::ReadOnly)) bytes = file.readAll();
  if (file.error() == QFileDevice::NoError) return {};
  return {file.error(), file.errorString()};
}

}  // namespace ztcad
