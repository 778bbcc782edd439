#pragma once

#include <QString>
#include <QtGlobal>
#include <string>
#include <vector>

/// Captures Qt's warnings within a scope as UTF-8 instead of printing them; other messages are discarded. At
/// most one instance may exist at a time.
class CapturedWarnings {
 public:
  CapturedWarnings() {
    captured().clear();
    m_previous = qInstallMessageHandler(capture);
  }
  ~CapturedWarnings() { qInstallMessageHandler(m_previous); }
  CapturedWarnings(const CapturedWarnings&) = delete;
  CapturedWarnings& operator=(const CapturedWarnings&) = delete;

  const std::vector<std::string>& messages() const { return captured(); }

 private:
  static std::vector<std::string>& captured() {
    static std::vector<std::string> messages;
    return messages;
  }
  static void capture(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg) captured().push_back(message.toStdString());
  }

  QtMessageHandler m_previous = nullptr;
};
