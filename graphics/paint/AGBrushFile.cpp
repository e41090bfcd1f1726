// The records of brushes and pens in files. Numbers are in the file's default byte order.
//
//   brush  0 u16 style, 2 u16 fill mode, 4 u16 pattern index, 6 u16 reserved (0), 8 colour, 12 colour 2,
//         16 f32 blend, 20 f32 angle (radians), 24 f32 centre x, 28 f32 centre y, 32 eight reserved bytes (0)
//   pen    0 u16 size mode, 2 u16 line cap, 4 u16 line join, 6 u16 reserved (0), 8 f32 size, 12 f32 ratio,
//         16 f32 angle (radians), 20 twenty reserved bytes (0), 40 the brush
#include <cstring>

#include "graphics/paint/AGBrush.h"
#include "graphics/paint/AGPen.h"
#include "kit/containers/AKSwapNumber.h"
#include "kit/streams/AKFileGeometry.h"
#include "kit/streams/AKFileNumbers.h"

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

// A record that is put together and then written at once: a document of 100,000 objects has 300,000 of them.
class RecordWriter {
 public:
  explicit RecordWriter(AKFile& file) : file_(file), swaps_(AKFileWords::MustSwap(file, 0)) {}

  void Put16(std::uint16_t number) { Put(swaps_ ? AKSwapNumber16_EndianBigFromHost(number) : number); }
  void PutFloat(float number) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &number, sizeof(bits));
    Put(swaps_ ? AKSwapNumber32_EndianBigFromHost(bits) : bits);
  }
  void PutColor(AGColor color) { Put(color); }
  void PutZeros(unsigned int count) {
    std::memset(bytes_ + size_, 0, count);
    size_ += count;
  }
  int Write() { return file_.Write(bytes_, size_); }

 private:
  template <typename T>
  void Put(const T& value) {
    std::memcpy(bytes_ + size_, &value, sizeof(value));
    size_ += sizeof(value);
  }

  AKFile& file_;
  bool swaps_;
  unsigned int size_ = 0;
  unsigned char bytes_[40];  // the longest of the records
};

}  // namespace

int AGBrush::WriteToFile(AKFile& file) const {
  RecordWriter record(file);
  for (const unsigned int number : {unsigned{style_}, unsigned{fillMode_}, unsigned{patternIndex_}, 0U}) {
    record.Put16(static_cast<std::uint16_t>(number));
  }
  record.PutColor(color_);
  record.PutColor(color2_);
  for (const float number : {blend_, angle_, centerX_, centerY_}) record.PutFloat(number);
  record.PutZeros(kBrushReservedBytes);
  return record.Write();
}

int AGBrush::ReadFromFile(const AKFile& file) {
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
  RecordWriter record(file);
  for (const unsigned int number : {unsigned{sizeMode_}, unsigned{lineCap_}, unsigned{lineJoin_}, 0U}) {
    record.Put16(static_cast<std::uint16_t>(number));
  }
  for (const float number : {size_, ratio_, angle_}) record.PutFloat(number);
  record.PutZeros(kPenReservedBytes);
  const int status = record.Write();
  return status == 0 ? brush_.WriteToFile(file) : status;
}

int AGPen::ReadFromFile(const AKFile& file) {
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
