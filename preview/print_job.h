// Printing through CUPS: which printers there are, sending pages, and what became of a job.
//
// Pages go as PDF, at their own size, with the job's options beside them. All calls wait for the print service, at most
// some seconds; each fails with CannotWrite and one line: what was asked of which printer, and why it was not done.
#pragma once

#include <string>
#include <vector>

#include "engine/pages.h"

namespace dorvo::preview {

struct PrinterName {
  std::string name;
  std::string description;  // empty when it has none
  bool is_default = false;
};
std::vector<PrinterName> printers();

struct PrintOrder {
  std::string printer;
  std::string title;
  int copies = 1;
  bool is_draft = false;    // else high quality
  int paper_width = 11906;  // twips, of the sheet held upright
  int paper_height = 16838;
};

// The job's options as the print service takes them, "media=iso_a4_210x297mm" and so on.
std::vector<std::pair<std::string, std::string>> job_options(const PrintOrder& order);

// Sends the pages and returns the number of the job; nothing stays in the queue when it fails.
int send(const PrintOrder& order, const std::vector<engine::PagePtr>& pages);

enum class JobState { Waiting, Printing, Done, Cancelled, Failed };
struct JobStatus {
  JobState state = JobState::Waiting;
  std::string reason;  // as the print service tells it; may be empty
};
JobStatus job_status(int job);
void cancel_job(const std::string& printer, int job);

}  // namespace dorvo::preview
