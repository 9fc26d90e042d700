#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "shell/message_box.h"
#include "shell/result_window.h"
#include "worksheet/data_selection.h"

namespace orvik::cli {

// What a headless run of one command showed the user.
struct RunRecord {
  std::string outcome;  // "completed", "refused", "cancelled", "failed"
  std::vector<shell::MessageBox> messages;
  std::string log;
  std::vector<shell::ResultWindow> windows;
};

// What `select` read: the resolved block (none when it could not be resolved).
struct SelectRecord {
  std::string outcome;
  std::vector<shell::MessageBox> messages;
  std::optional<worksheet::DataSelection> selection;
};

// The run as JSON or as text for a person, streamed to `out` as it is made.
void WriteRunRecordJson(const RunRecord& record, std::ostream& out);
void WriteRunRecordText(const RunRecord& record, std::ostream& out);
std::string RunRecordJson(const RunRecord& record);
std::string RunRecordText(const RunRecord& record);
std::string SelectRecordJson(const SelectRecord& record);
std::string SelectRecordText(const SelectRecord& record);

// A result grid as aligned columns of text, one line per row.
void WriteAlignedTable(const shell::ResultTable& table, std::ostream& out);
std::string AlignedTable(const shell::ResultTable& table);

}  // namespace orvik::cli
