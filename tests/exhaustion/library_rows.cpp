#include "trial.h"

namespace exhaustion {

namespace {

const std::string oddName = "1 " + longText() + " - 2";

/// A host's log: the lines that it received.
struct Log {
  char text[1000] = "";
  std::size_t size = 0;
};

void writeToLog(const char* line, void* context) {
  Log& log = *static_cast<Log*>(context);
  log.size += std::string_view(line).copy(log.text + log.size, sizeof log.text - 1 - log.size);
}

Trial correctsNames() {
  auto* const corrected = new std::string;
  const auto* const name = new std::string(oddName);
  return {[=] {
            doCorrectName(*name, *corrected, std::string());
            return Report::Nothing;
          },
          [=] { return *corrected; }};
}

Trial correctsNamesInBuffers() {
  auto* const corrected = new char[200]{};
  return {[=] {
            doCorrectName_nostl(oddName.c_str(), corrected, "");
            return Report::Nothing;
          },
          [=] { return std::string(corrected); }};
}

Trial reports(bool toLog) {
  auto* const log = new Log;
  if (toLog) ztCAD_setAssertionWriter(writeToLog, log);
  return {[=] { return ztCAD_report("a > b", "file.cpp", 7), Report::Nothing; },
          [=] { return std::string(log->text); }};
}

// Whether the function was installed shows in the next report.
Trial installsWriters() {
  auto* const log = new Log;
  return {[=] { return ztCAD_setAssertionWriter(writeToLog, log), Report::Nothing; },
          [=] {
            log->size = 0;
            *log->text = '\0';
            ztCAD_report("state", "", 0);
            return std::string(log->text);
          }};
}

const Row rows[] = {
    {"ztCADVersion", "", [] { return points(ztCADVersion); }},
    {"getParallel_Morvik", "", [] { return points(getParallel_Morvik); }},
    {"ztCAD_getParallelMode", "", [] { return answers(ztCAD_getParallelMode); }},
    {"ztCAD_setParallelMode", "",
     [] { return answers([] { return ztCAD_setParallelMode(0) + ztCAD_setParallelMode(1); }); }},
    {"ztCAD_getThreadCounts", "",
     [] {
       return answers([] {
         std::uint32_t logical = 0;
         ztCAD_getThreadCounts(&logical, nullptr);
         return logical;
       });
     }},
    {"ztCAD_setThreadCounts", "",
     [] {
       return answers([] { return ztCAD_setThreadCounts(2), getParallel_Morvik()->logicalThreads > 0; });
     }},
    {"ztCAD_getPhysicalCoreCount", "", [] { return answers(ztCAD_getPhysicalCoreCount); }},
    {"ztCAD_setAssertionWriter", "", installsWriters},
    {"ztCAD_report", "to a host's function", [] { return reports(true); }},
    {"ztCAD_report", "to Qt's warning output", [] { return reports(false); }},
    {"doCorrectName", "", correctsNames},
    {"doCorrectName_nostl", "", correctsNamesInBuffers},
    {"crtUniqueName", "",
     [] {
       auto* const name = new std::string(longText());
       return Trial{[=] { return crtUniqueName(*name), Report::Nothing; }, [=] { return *name; }};
     }},
    {"crtUniqueName_nostl", "",
     [] {
       auto* const name = new std::string(longText());
       return Trial{[=] { return crtUniqueName_nostl(name->data()), Report::Nothing; },
                    [=] { return std::string(name->c_str()); }};
     }},
};

}  // namespace

std::vector<Row> libraryRows() { return {std::begin(rows), std::end(rows)}; }

}  // namespace exhaustion
