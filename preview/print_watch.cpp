#include "preview/print_watch.h"

#include <array>

#include "value/failure.h"

namespace dorvo::preview {
namespace {

constexpr int kEvery = 1000;  // ms
constexpr int kUnanswered = 3;

}  // namespace

PrintWatch::PrintWatch(PrintOrder order, int job, QObject* parent)
    : QObject(parent), order_(std::move(order)), job_(job) {
  connect(&timer_, &QTimer::timeout, this, [this] { look(); });
  timer_.start(kEvery);
}

void PrintWatch::cancel() {
  cancel_job(order_.printer, job_);
}

JobStatus PrintWatch::status() {
  try {
    const JobStatus told = job_status(job_);
    unanswered_ = 0;
    return told;
  } catch (const value::Failure& failure) {
    if (++unanswered_ < kUnanswered) return last_;
    return {JobState::Failed, failure.description()};
  }
}

void PrintWatch::look() {
  const JobStatus now = status();
  if (now.state == last_.state && now.reason == last_.reason) return;
  last_ = now;
  if (has_ended(now.state)) {
    timer_.stop();
    deleteLater();
  }
  changed(now);
}

QString job_text(const PrintOrder& order, int job, const JobStatus& status) {
  static constexpr std::array<const char*, 5> kStates = {"is waiting", "is printing", "is printed", "was cancelled",
                                                         "failed"};
  QString text = QString::fromStdString(order.title) + ": job " + QString::number(job) + " on " +
                 QString::fromStdString(order.printer) + " " + kStates[static_cast<std::size_t>(status.state)];
  const bool is_usual = status.state == JobState::Done || status.reason.empty();
  return is_usual ? text : text + " (" + QString::fromStdString(status.reason) + ")";
}

}  // namespace dorvo::preview
