#include "job/page_stamp.h"

namespace ostrel {

void DrawPrintStamp(DeviceContext /*hdc*/, const Rect& /*pageRect*/,
                    const WatermarkData& /*record*/, std::int32_t /*pageState*/, double /*scale*/,
                    Size /*pageSize*/) {}

}  // namespace ostrel
