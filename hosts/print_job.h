// One print job as an application and the graphics engine play it together: the calls of a document
// with the driver's events around them, in the order in which the platform documents them
// (DrvDocumentEvent, winddiui.h). The same here in memory and in a real print system: what differs
// stands behind JobSystem.
#pragma once

#include "job/document_events.h"
#include "platform/window_types.h"

#include <cstdint>
#include <functional>

namespace ostrel {

// Events of a document, DOCUMENT_EVENT_...: those that the driver knows, and others that a print
// system raises too.
enum class JobEvent : std::int32_t {
  kCreateContextPre = kDocumentCreateDcPre,  // no context yet
  kCreateContextPost = 2,
  kStartDoc = kDocumentStartDoc,  // before it; the driver can refuse the job
  kStartPage = kDocumentStartPage,
  kEndPage = kDocumentEndPage,  // before the page is given up
  kEndDocPre = 8,
  kDeleteContext = 10,
  kEndDocPost = 12,
  kStartDocPost = kDocumentStartDocPost,
};

// The system that prints. Calls answer whether they have succeeded.
class JobSystem {
 public:
  JobSystem() = default;
  virtual ~JobSystem() = default;
  JobSystem(const JobSystem&) = delete;
  JobSystem& operator=(const JobSystem&) = delete;

  // Hands an event to the driver. Result: the driver's answer.
  virtual std::int32_t Raise(JobEvent event, DeviceContext context) = 0;

  virtual DeviceContext CreateContext() = 0;  // null when there is none to be had
  virtual bool BeginDocument(DeviceContext context) = 0;
  virtual bool BeginPage(DeviceContext context) = 0;
  virtual bool FinishPage(DeviceContext context) = 0;
  virtual bool FinishDocument(DeviceContext context) = 0;
  virtual void DeleteContext(DeviceContext context) = 0;
};

enum class JobResult { kPrinted, kRefused, kFailed };

// Prints a document whose pages `draw` draws, counted from 0. A job that the driver refuses is
// given up before it is started.
JobResult PrintJob(JobSystem& system, int pages,
                   const std::function<void(DeviceContext context, int page)>& draw);

}  // namespace ostrel
