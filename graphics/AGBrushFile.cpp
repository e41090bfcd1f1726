// The records of brushes and pens in files. Numbers are in the file's default byte order.
//
//   brush  0 u16 style, 2 u16 fill mode, 4 u16 pattern index, 6 u16 reserved (0), 8 colour, 12 colour 2,
//         16 f32 blend, 20 f32 angle (radians), 24 f32 centre x, 28 f32 centre y, 32 eight reserved bytes (0)
//   pen    0 u16 size mode, 2 u16 line cap, 4 u16 line join, 6 u16 reserved (0), 8 f32 size, 12 f32 ratio,
//         16 f32 angle (radians), 20 twenty reserved bytes (0), 40 the brush
#include "graphics/AGBrush.h"
#include "graphics/AGPen.h"
#include "kit/AKFileGeometry.h"
#include "kit/AKFileNumbers.h"

namespace {

constexpr unsigned int kBrushReservedBytes = 8;
constexpr unsigned int kPenReservedBytes = 20;

// Runs the steps in order until one fails; returns the failing step's status, or 0.
template <typename... Steps>
int InOrder(Steps... steps) {
  int status = 0;
  (void)(((status = steps()) == 0) && ...);
  return status;
}

}  // namespace

int AGBrush::WriteToFile(AKFile& file) const {
  return InOrder([&] { return AKFileWriteUInt16(file, style_); }, [&] { return AKFileWriteUInt16(file, fillMode_); },
                 [&] { return AKFileWriteUInt16(file, patternIndex_); }, [&] { return AKFileWriteUInt16(file, 0); },
                 [&] { return AKFileWriteAGColor(file, color_); }, [&] { return AKFileWriteAGColor(file, color2_); },
                 [&] { return AKFileWriteFloat32(file, blend_); }, [&] { return AKFileWriteFloat32(file, angle_); },
                 [&] { return AKFileWriteFloat32(file, centerX_); }, [&] { return AKFileWriteFloat32(file, centerY_); },
                 [&] { return AKFileWriteZeros(file, kBrushReservedBytes); });
}

int AGBrush::ReadFromFile(AKFile const& file) {
  ResetCustomGradient();
  unsigned short reserved = 0;
  const int status =
      InOrder([&] { return AKFileReadUInt16(file, &style_); }, [&] { return AKFileReadUInt16(file, &fillMode_); },
              [&] { return AKFileReadUInt16(file, &patternIndex_); }, [&] { return AKFileReadUInt16(file, &reserved); },
              [&] { return AKFileReadAGColor(file, &color_); }, [&] { return AKFileReadAGColor(file, &color2_); },
              [&] { return AKFileReadFloat32(file, &blend_); }, [&] { return AKFileReadFloat32(file, &angle_); },
              [&] { return AKFileReadFloat32(file, &centerX_); }, [&] { return AKFileReadFloat32(file, &centerY_); },
              [&] { return AKFileSkip(file, kBrushReservedBytes); });
  if (status != 0) *this = kAGNullBrush;
  return status;
}

int AGPen::WriteToFile(AKFile& file) const {
  return InOrder([&] { return AKFileWriteUInt16(file, sizeMode_); }, [&] { return AKFileWriteUInt16(file, lineCap_); },
                 [&] { return AKFileWriteUInt16(file, lineJoin_); }, [&] { return AKFileWriteUInt16(file, 0); },
                 [&] { return AKFileWriteFloat32(file, size_); }, [&] { return AKFileWriteFloat32(file, ratio_); },
                 [&] { return AKFileWriteFloat32(file, angle_); },
                 [&] { return AKFileWriteZeros(file, kPenReservedBytes); }, [&] { return brush_.WriteToFile(file); });
}

int AGPen::ReadFromFile(AKFile const& file) {
  unsigned short reserved = 0;
  const int status =
      InOrder([&] { return AKFileReadUInt16(file, &sizeMode_); }, [&] { return AKFileReadUInt16(file, &lineCap_); },
              [&] { return AKFileReadUInt16(file, &lineJoin_); }, [&] { return AKFileReadUInt16(file, &reserved); },
              [&] { return AKFileReadFloat32(file, &size_); }, [&] { return AKFileReadFloat32(file, &ratio_); },
              [&] { return AKFileReadFloat32(file, &angle_); }, [&] { return AKFileSkip(file, kPenReservedBytes); },
              [&] { return brush_.ReadFromFile(file); });
  if (status != 0) *this = kAGNullPen;
  return status;
}
