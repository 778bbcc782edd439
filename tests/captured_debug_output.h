#pragma once

#include <QString>
#include <QtGlobal>
#include <string>
#include <vector>

/// Captures Qt's debug output for a scope instead of printing it, as UTF-8. Messages of other types are
/// captured with a leading "?", so an unexpected warning fails the comparison. Only one instance may exist at
/// a time.
class CapturedDebugOutput {
 public:
  CapturedDebugOutput() {
    captured().clear();
    m_previous = qInstallMessageHandler(capture);
  }
  ~CapturedDebugOutput() { qInstallMessageHandler(m_previous); }
  CapturedDebugOutput(const CapturedDebugOutput&) = delete;
  CapturedDebugOutput& operator=(const CapturedDebugOutput&) = delete;

  const std::vector<std::string>& messages() const { return captured(); }

 private:
  static std::vector<std::string>& captured() {
    static std::vector<std::string> messages;
    return messages;
  }
  static void capture(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    captured().push_back((type == QtDebugMsg ? "" : "?") + message.toStdString());
  }

  QtMessageHandler m_previous = nullptr;
};
