// An enhanced metafile of the real drawing as the operations that the in-memory platform writes
// down, so that what both were given to draw can be compared line by line.
//
// A metafile has no record of an escape: a test that wants them in their places writes them into it
// as comments. What a metafile tells in a form of its own is brought back: the corners of shapes
// come in order there, so RecordedByMetafiles brings the other side's into order too.
#pragma once

#include "platform/headless/drawing_record.h"
#include "platform/platform.h"

#include <windows.h>

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace ostrel::print_system {

// The operations of a metafile in their order, without what was in force with them. Throws
// std::runtime_error for a record that stands for no operation that is known here.
std::vector<headless::DrawingOperation> OperationsOf(HENHMETAFILE metafile);

// Operations that were written down in memory, as a metafile has them: without a mode that was
// refused and a shape without room, the corners of shapes in order, and a rectangle that is filled
// between the selections of its brush and of the one before.
std::vector<headless::DrawingOperation> RecordedByMetafiles(
    std::span<const headless::DrawingOperation> operations);

// A metafile in the making that a printer is the model of.
class Metafile {
 public:
  explicit Metafile(const wchar_t* printer);
  ~Metafile();
  Metafile(const Metafile&) = delete;
  Metafile& operator=(const Metafile&) = delete;

  HDC native() const { return context_; }
  DeviceContext context() const { return reinterpret_cast<DeviceContext>(context_); }
  // Ends it. The operations are OperationsOf's.
  std::vector<headless::DrawingOperation> Operations();

 private:
  HDC model_;
  HDC context_;
};

// What is drawn on a page in memory, by a platform in memory that ends with it. It stands in a file
// apart from the platform's own headers, whose macros give some of its functions other names.
std::vector<headless::DrawingOperation> DrawnInMemory(
    const headless::PrinterDevice& device,
    const std::function<void(Platform& platform, DeviceContext page)>& draw);

// Writes an escape into the metafile that a context is making.
void CommentEscape(HDC context, const headless::DrawingOperation& escape);

// One line an operation.
std::vector<std::string> LinesOf(std::span<const headless::DrawingOperation> operations);

}  // namespace ostrel::print_system
