// Printing by CUPS: finished pages go to a queue as PDF, with the job's options. No window is needed for any of it.
#pragma once

#include <string>
#include <vector>

#include "engine/pages.h"

namespace dorvo::preview {

struct PrintQueue {
  std::string name;
  bool usual = false;  // the user's default
};

// The queues that the print server knows; none when there is no server.
std::vector<PrintQueue> print_queues();

struct Paper {
  int width = 0;  // twips, as the sheet is read; 0: as the report's first page
  int height = 0;
};

struct PrintRequest {
  std::string queue;
  std::string title;
  std::vector<engine::PagePtr> pages;
  int copies = 1;
  bool draft = false;
  Paper paper;  // another size than the pages': they are made to fit
};

// Number of the job. Fails with CannotWrite, naming the queue and the server's reason.
int submit(const PrintRequest& request);

enum class JobState { Waiting, Printing, Done, Cancelled, Failed };
JobState job_state(const std::string& queue, int job);
void cancel_job(const std::string& queue, int job);

// "Job 12 on Laser was cancelled"; empty for a state that needs no word.
std::string job_message(const std::string& queue, int job, JobState state);

// "1-3, 5" as indexes of `count` pages, ascending and each once. Fails with TypeMismatch, saying what was expected.
std::vector<std::size_t> page_range(const std::string& text, std::size_t count);

}  // namespace dorvo::preview
