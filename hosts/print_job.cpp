#include "print_job.h"

namespace ostrel {
namespace {

bool PrintPage(JobSystem& system, DeviceContext context, int page,
               const std::function<void(DeviceContext context, int page)>& draw) {
  system.Raise(JobEvent::kStartPage, context);
  if (!system.BeginPage(context)) {
    return false;
  }
  draw(context, page);
  system.Raise(JobEvent::kEndPage, context);
  return system.FinishPage(context);
}

JobResult PrintDocument(JobSystem& system, DeviceContext context, int pages,
                        const std::function<void(DeviceContext context, int page)>& draw) {
  if (system.Raise(JobEvent::kStartDoc, context) == kDocumentEventRefused) {
    return JobResult::kRefused;
  }
  if (!system.BeginDocument(context)) {
    return JobResult::kFailed;
  }
  system.Raise(JobEvent::kStartDocPost, context);
  bool isGood = true;
  for (int page = 0; page < pages && isGood; ++page) {
    isGood = PrintPage(system, context, page, draw);
  }
  system.Raise(JobEvent::kEndDocPre, context);
  isGood = system.FinishDocument(context) && isGood;
  system.Raise(JobEvent::kEndDocPost, context);
  return isGood ? JobResult::kPrinted : JobResult::kFailed;
}

}  // namespace

JobResult PrintJob(JobSystem& system, int pages,
                   const std::function<void(DeviceContext context, int page)>& draw) {
  if (system.Raise(JobEvent::kCreateContextPre, nullptr) == kDocumentEventRefused) {
    return JobResult::kRefused;
  }
  const DeviceContext context = system.CreateContext();
  if (context == nullptr) {
    return JobResult::kFailed;
  }
  system.Raise(JobEvent::kCreateContextPost, context);
  const JobResult result = PrintDocument(system, context, pages, draw);
  system.Raise(JobEvent::kDeleteContext, context);
  system.DeleteContext(context);
  return result;
}

}  // namespace ostrel
