#pragma once

#include <QString>
#include <QtGlobal>
#include <string>
#include <vector>

/// Keeps Qt's warnings of a scope instead of printing them, as UTF-8; other messages are dropped. One at a time.
class CapturedWarnings {
 public:
  CapturedWarnings() {
    kept().clear();
    m_previous = qInstallMessageHandler(keep);
  }
  ~CapturedWarnings() { qInstallMessageHandler(m_previous); }
  CapturedWarnings(const CapturedWarnings&) = delete;
  CapturedWarnings& operator=(const CapturedWarnings&) = delete;

  const std::vector<std::string>& messages() const { return kept(); }

 private:
  static std::vector<std::string>& kept() {
    static std::vector<std::string> messages;
    return messages;
  }
  static void keep(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg) kept().push_back(message.toStdString());
  }

  QtMessageHandler m_previous = nullptr;
};
