// Follows a print job until it has ended.
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "preview/print_job.h"

namespace dorvo::preview {

class PrintWatch : public QObject {
 public:
  PrintWatch(PrintOrder order, int job, QObject* parent);

  // The state is another now. After the last of these the watch is gone. A print service that does not answer any more
  // counts as a failed job.
  std::function<void(const JobStatus&)> changed;

  const PrintOrder& order() const { return order_; }
  int job() const { return job_; }
  void cancel();  // fails as cancel_job()

 private:
  void look();
  JobStatus status();

  PrintOrder order_;
  int job_;
  QTimer timer_;
  int unanswered_ = 0;
  JobStatus last_;
};

// "Form201: job 12 on Office is cancelled", with the reason where there is one.
QString job_text(const PrintOrder& order, int job, const JobStatus& status);
inline bool has_ended(JobState state) {
  return state != JobState::Waiting && state != JobState::Printing;
}

}  // namespace dorvo::preview
