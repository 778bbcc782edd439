#pragma once

#include <sys/resource.h>
#include <unistd.h>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

// Conditions under which the system refuses what it otherwise does.

/// Drops root's privileges for a scope, because file permissions do not apply to root; does nothing for other
/// users.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    if (!m_root) return;
    if (setresgid(nobody, nobody, 0) != 0 || setresuid(nobody, nobody, 0) != 0)
      throw std::runtime_error("cannot drop privileges");
  }
  ~OrdinaryUser() {
    if (m_root && (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0)) std::abort();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  static constexpr uid_t nobody = 65534;
  const bool m_root = geteuid() == 0;
};

/// Simulates a full disk for a scope: no file of this process can grow beyond `bytes`. An attempt raises
/// SIGXFSZ, which ends a process that does not handle it.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    if (getrlimit(RLIMIT_FSIZE, &m_limit) != 0) throw std::runtime_error("no file size limit");
    rlimit limit = m_limit;
    limit.rlim_cur = bytes;
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) throw std::runtime_error("cannot limit file sizes");
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_limit); }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit m_limit = {};
};
