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

/// Thrown to get out of a document that is being written; ends in `writeTextFile`.
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
/// Names that a file has; 0 when the system does not tell.
DWORD hardLinks(const QString& fileName) {
  const std::wstring name = QDir::toNativeSeparators(fileName).toStdWString();
  constexpr DWORD shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE file = CreateFileW(name.c_str(), 0, shared, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return 0;
  BY_HANDLE_FILE_INFORMATION information = {};
  const bool told = GetFileInformationByHandle(file, &information) != 0;
  CloseHandle(file);
  return told ? information.nNumberOfLinks : 0;
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

enum class Outcome { Written, Failed, Refused };

Outcome replace(const QString& fileName, const std::function<void(ByteOutput&)>& write) {
  QSaveFile file(fileName);
  errno = 0;
  if (!file.open(textForWriting)) {
    // a full disk is no refusal: it would take the direct write no better, and the earlier file would be gone
    return errno == ENOSPC ? Outcome::Failed : Outcome::Refused;
  }
  if (!fill(file, write) || !file.flush()) {  // commit does not tell when the last bytes are not taken
    file.cancelWriting();
    return Outcome::Failed;
  }
  return file.commit() ? Outcome::Written : Outcome::Refused;
}

bool writeDirectly(const QString& fileName, const std::function<void(ByteOutput&)>& write) {
  QFile file(fileName);
  return file.open(textForWriting) && fill(file, write) && file.flush();
}

}  // namespace

bool writeTextFile(const QString& fileName, const std::function<void(ByteOutput&)>& write) {
  if (fileName.contains(QChar()))
    return false;  // the system would take what stands before the NUL for the name
  const Outcome outcome = mayBeReplaced(fileName) ? replace(fileName, write) : Outcome::Refused;
  if (outcome == Outcome::Refused) return writeDirectly(fileName, write);
  return outcome == Outcome::Written;
}

int readFile(const QString& fileName, QByteArray& bytes) {
  QFile file(fileName);
  if (file.open(QIODevice::ReadOnly)) bytes = file.readAll();
  return file.error();
}

}  // namespace ztcad
