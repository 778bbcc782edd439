#pragma once

#include <QString>
#include <QtGlobal>
#include <string>
#include <vector>

/// Keeps Qt's debug output of a scope instead of printing it, as UTF-8; messages of other kinds are marked by a
/// leading "?", so that none goes by unseen. One at a time.
class CapturedDebugOutput {
 public:
  CapturedDebugOutput() {
    kept().clear();
    m_previous = qInstallMessageHandler(keep);
  }
  ~CapturedDebugOutput() { qInstallMessageHandler(m_previous); }
  CapturedDebugOutput(const CapturedDebugOutput&) = delete;
  CapturedDebugOutput& operator=(const CapturedDebugOutput&) = delete;

  const std::vector<std::string>& messages() const { return kept(); }

 private:
  static std::vector<std::string>& kept() {
    static std::vector<std::string> messages;
    return messages;
  }
  static void keep(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    kept().push_back((type == QtDebugMsg ? "" : "?") + message.toStdString());
  }

  QtMessageHandler m_previous = nullptr;
};
