#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>

#include "../failure.h"
#include "child_process.h"
#include "file_names.h"

namespace cli {

namespace {

[[noreturn]] void failToStart() {
  const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
  throw Failure("Cannot start a worker process: " + error.message());
}

class Handle {
 public:
  explicit Handle(HANDLE handle = nullptr) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& other) noexcept : m_handle(other.m_handle) { other.m_handle = nullptr; }
  Handle& operator=(Handle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
  }
  ~Handle() {
    if (m_handle) CloseHandle(m_handle);
  }
  HANDLE get() const { return m_handle; }

 private:
  HANDLE m_handle;
};

struct Pipe {
  Handle parent;
  Handle child;
};

/// A pipe between parent and child. Only named pipes can be read with a deadline.
/// @param direction PIPE_ACCESS_INBOUND: the parent reads; PIPE_ACCESS_OUTBOUND: it writes
Pipe makePipe(DWORD direction) {
  static std::atomic<unsigned> counter{0};
  const std::wstring name =
      L"\\\\.\\pipe\\ztcad-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(counter++);
  Pipe pipe;
  pipe.parent =
      Handle(CreateNamedPipeW(name.c_str(), direction | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
                              PIPE_TYPE_BYTE | PIPE_WAIT, 1, 65536, 65536, 0, nullptr));
  if (!pipe.parent.get()) failToStart();
  SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  const DWORD access = direction == PIPE_ACCESS_INBOUND ? GENERIC_WRITE : GENERIC_READ;
  pipe.child = Handle(CreateFileW(name.c_str(), access, 0, &inheritable, OPEN_EXISTING, 0, nullptr));
  if (!pipe.child.get()) failToStart();
  return pipe;
}

std::wstring nameOfThisProgram() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length == 0) failToStart();
    if (length < name.size()) return name.substr(0, length);
    name.resize(2 * name.size());
  }
}

/// The arguments are words of this program's own, which need no quotes.
std::wstring commandLine(const std::wstring& program, const std::vector<std::string>& arguments) {
  std::wstring line = L"\"" + program + L"\"";
  for (const std::string& argument : arguments)
    line += L" " + pathOf(argument).wstring();
  return line;
}

class WindowsChildProcess final : public ChildProcess {
 public:
  explicit WindowsChildProcess(const std::vector<std::string>& arguments) : m_event(newEvent()) {
    // a child that another thread starts meanwhile would inherit these handles too
    static std::mutex starting;
    const std::lock_guard<std::mutex> lock(starting);
    Pipe input = makePipe(PIPE_ACCESS_OUTBOUND);
    Pipe output = makePipe(PIPE_ACCESS_INBOUND);
    const std::wstring program = nameOfThisProgram();
    std::wstring line = commandLine(program, arguments);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.child.get();
    startup.hStdOutput = output.child.get();
    startup.hStdError = inheritableStandardError();
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
      failToStart();
    CloseHandle(process.hThread);
    m_process = Handle(process.hProcess);
    m_toChild = std::move(input.parent);
    m_fromChild = std::move(output.parent);
  }

  ~WindowsChildProcess() override {
    kill();
    waitForEnd();
  }
  WindowsChildProcess(const WindowsChildProcess&) = delete;
  WindowsChildProcess& operator=(const WindowsChildProcess&) = delete;

  bool write(std::string_view bytes) override {
    while (!bytes.empty()) {
      OVERLAPPED operation{};
      operation.hEvent = m_event.get();
      DWORD written = 0;
      if (!WriteFile(m_toChild.get(), bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &operation) &&
          GetLastError() != ERROR_IO_PENDING)
        return false;
      if (!GetOverlappedResult(m_toChild.get(), &operation, &written, TRUE)) return false;
      bytes.remove_prefix(written);
    }
    return true;
  }

  Read read(char* buffer, std::size_t& size, Clock::time_point deadline) override {
    OVERLAPPED operation{};
    operation.hEvent = m_event.get();
    const auto capacity = static_cast<DWORD>(std::min<std::size_t>(size, 65536));
    size = 0;
    if (!ReadFile(m_fromChild.get(), buffer, capacity, nullptr, &operation)) {
      if (GetLastError() != ERROR_IO_PENDING) return Read::End;
      if (WaitForSingleObject(m_event.get(), millisecondsUntil(deadline)) != WAIT_OBJECT_0) {
        CancelIo(m_fromChild.get());
        DWORD ignored = 0;
        GetOverlappedResult(m_fromChild.get(), &operation, &ignored, TRUE);
        return Read::TimedOut;
      }
    }
    DWORD count = 0;
    if (!GetOverlappedResult(m_fromChild.get(), &operation, &count, TRUE) || count == 0) return Read::End;
    size = count;
    return Read::Data;
  }

  void closeInput() override { m_toChild = Handle(); }

  void kill() override { TerminateProcess(m_process.get(), 1); }

  std::string waitForEnd() override {
    WaitForSingleObject(m_process.get(), INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(m_process.get(), &code);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), code < 0x10000 ? "exit code %lu" : "exit code 0x%08lX", code);
    return text.data();
  }

 private:
  static Handle newEvent() {
    Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!event.get()) failToStart();
    return event;
  }

  static HANDLE inheritableStandardError() {
    const HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
    SetHandleInformation(stream, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return stream;
  }

  static DWORD millisecondsUntil(Clock::time_point deadline) {
    using std::chrono::milliseconds;
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
    return static_cast<DWORD>(std::clamp<std::int64_t>(left, 0, INFINITE - 1));
  }

  Handle m_event;
  Handle m_process;
  Handle m_toChild;
  Handle m_fromChild;
};

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::start(const std::vector<std::string>& arguments) {
  return std::make_unique<WindowsChildProcess>(arguments);
}

}  // namespace cli
