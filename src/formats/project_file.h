#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "shell/result_window.h"
#include "worksheet/sheet_edits.h"
#include "worksheet/worksheet.h"

namespace orvik::formats {

// Where a document window sat in the frame, so a project reopens as it was
// left. Null fields leave the placement to the frame.
struct WindowPlacement {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool minimized = false;
  bool maximized = false;
  friend bool operator==(const WindowPlacement&, const WindowPlacement&) = default;
};

// One worksheet window of a project: the sheet with its cells, header names,
// size, caret and selection, and its cell formats.
struct ProjectSheet {
  worksheet::Worksheet sheet;
  std::vector<worksheet::SheetFormats::Run> formats;
  std::optional<WindowPlacement> placement;
};

// One result window of a project: the record the analysis filled, stored as
// it is so that reopening shows it without computing anything again, with
// the run that made it (window.run, null in files older than format 2), so a
// reopened chart can still be drawn again from its own data.
struct ProjectResult {
  shell::ResultWindow window;
  std::optional<WindowPlacement> placement;
};

// Everything a project file holds: the document windows in their order in
// the frame (each entry is a sheet or a result window, by index), which one
// was active, and the main window's worksheet counter.
struct Project {
  struct Document {
    enum class Kind { Sheet, Result };
    Kind kind = Kind::Sheet;
    std::size_t index = 0;  // into sheets or results
  };

  int worksheetCounter = 0;
  std::vector<ProjectSheet> sheets;
  std::vector<ProjectResult> results;
  std::vector<Document> order;
  std::optional<std::size_t> active;  // into order
  // The program-wide options saved with the project (the rule settings of
  // the control charts), as the control states of their dialogs. Empty in
  // files that hold none.
  std::vector<shell::ControlSetting> options;
};

// The format version this program writes; files of a higher version are
// refused, files of this version or lower are read. Version 2 added the
// result windows' runs, version 3 the drawing style of chart series
// (stepped limits, dashed lines), version 4 the designs of design sheets
// and the looks of restyled charts.
inline constexpr int kProjectFormatVersion = 4;

// A project file that cannot be read. what() is the message the user sees,
// naming the file and what is wrong with it.
class ProjectFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The stages of a save, reported in order (for tests that stop a save
// midway and for progress display).
enum class SaveStage { TemporaryCreated, SheetsWritten, ResultsWritten, Committed, Synced, Renamed };

// Writes `project` to `path` atomically: the file is written under a
// temporary name in the same folder, flushed to the disk, and renamed over
// `path` only when complete, and the folder is flushed after the rename. A
// process that dies at any moment leaves either the previous file or the new
// one, never a mixture. A save or open of `path` first removes the
// temporaries of saves of the same file that were killed before their
// rename. Throws ProjectFileError when the file cannot be
// written; the previous file is then untouched and the temporary removed.
void SaveProject(const std::string& path, const Project& project,
                 const std::function<void(SaveStage)>& progress = {});

// Reads the project at `path`. Throws ProjectFileError with a message for
// the user when the file is missing, not a project, truncated, damaged or
// written by a newer version; nothing is returned half-read.
Project LoadProject(const std::string& path);

// True when `path` ends with ".orv" (any case).
bool IsProjectPath(const std::string& path);

}  // namespace orvik::formats
