// What drawing on bitmaps asks the allocator for, and what it does when that refuses. The functions below stand in for
// the library's in the whole program, the native layer and its libraries included.
#include <gtest/gtest.h>
#include <pthread.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "AKPlatform/AKPixelOrder.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "CoreGraphics/CGContext.h"
#include "CoreGraphics/CGImage.h"
#include "CoreText/CTFont.h"
#include "CoreText/CTLine.h"
#include "CoreText/CTStringAttributes.h"

namespace {

constexpr std::size_t kSide = 64;

// Outlives what is drawn with it; its path takes memory when it is copied.
class Tools {
 public:
  Tools() {
    for (int i = 0; i < 40; ++i) {
      const double angle = i * 0.6;
      const CGPoint p{32 + 25 * std::cos(angle), 32 + 25 * std::sin(angle)};
      i == 0 ? CGPathMoveToPoint(path, nullptr, p.x, p.y) : CGPathAddLineToPoint(path, nullptr, p.x, p.y);
    }
    const std::vector<unsigned char> pixels(16 * 16 * 4, 0x80);
    CGColorSpaceRef rgb = CGColorSpaceCreateDeviceRGB();
    CGContextRef small =
        CGBitmapContextCreate(const_cast<unsigned char*>(pixels.data()), 16, 16, 8, 64, rgb, kCGBitmapBlueFirst);
    image = CGBitmapContextCreateImage(small);
    CGContextRelease(small);
    CGColorSpaceRelease(rgb);
    CFStringRef name = CFStringCreateWithCString(nullptr, "DejaVu Sans", kCFStringEncodingUTF8);
    CTFontRef font = CTFontCreateWithName(name, 20, nullptr);
    CFAttributedStringRef plain = CFAttributedStringCreate(nullptr, name, nullptr);
    CFMutableAttributedStringRef text = CFAttributedStringCreateMutableCopy(nullptr, 0, plain);
    CFAttributedStringSetAttribute(text, CFRangeMake(0, 11), kCTFontAttributeName, font);
    line = CTLineCreateWithAttributedString(text);
    for (CFTypeRef object : {CFTypeRef(name), CFTypeRef(font), CFTypeRef(plain), CFTypeRef(text)}) CFRelease(object);
  }

  CGMutablePathRef path = CGPathCreateMutable();
  CGImageRef image;
  CTLineRef line;
};

Tools& The() {
  static Tools& tools = *new Tools;
  return tools;
}

void AddPath(CGContextRef context) {
  CGContextBeginPath(context);
  CGContextAddPath(context, The().path);
}
void Clip(CGContextRef context) {
  AddPath(context);
  CGContextClip(context);
}
void Fill(CGContextRef context) {
  AddPath(context);
  CGContextDrawPath(context, kCGPathFill);
}
void FillAll(CGContextRef context) { CGContextFillRect(context, CGRectMake(0, 0, kSide, kSide)); }

void Shade(CGContextRef context) {
  const CGFunctionCallbacks callbacks{0, [](void*, const CGFloat* in, CGFloat* out) { out[0] = *in, out[3] = 1; },
                                      nullptr};
  CGColorSpaceRef rgb = CGColorSpaceCreateDeviceRGB();
  CGFunctionRef function = CGFunctionCreate(nullptr, 1, nullptr, 4, nullptr, &callbacks);
  CGShadingRef shading = CGShadingCreateAxial(rgb, {0, 0}, {60, 9}, function, true, true);
  CGContextDrawShading(context, shading);
  CGShadingRelease(shading);
  CGFunctionRelease(function);
  CGColorSpaceRelease(rgb);
}

void DrawCell(void*, CGContextRef cell) {
  CGContextSetRGBFillColor(cell, 1, 0, 0, 1);
  CGContextConcatCTM(cell, {0.125, 0, 0, 0.125, 0, 0});
  Fill(cell);
}

void FillPattern(CGContextRef context) {
  const CGPatternCallbacks callbacks{0, &DrawCell, nullptr};
  CGPatternRef pattern = CGPatternCreate(nullptr, CGRectMake(0, 0, 8, 8), CGAffineTransformIdentity, 8, 8,
                                         kCGPatternTilingConstantSpacing, true, &callbacks);
  if (pattern == nullptr) return;
  CGColorSpaceRef space = CGColorSpaceCreatePattern(nullptr);
  const CGFloat opaque = 1;
  CGContextSetFillColorSpace(context, space);
  CGContextSetFillPattern(context, pattern, &opaque);
  CGPatternRelease(pattern);
  CGColorSpaceRelease(space);
  Fill(context);
}

// Each in a state of its own. `makes` are those that make objects, which takes memory each time.
struct Operation {
  const char* name;
  std::function<void(CGContextRef)> draw;
  bool makes = false;
  bool isText = false;
};

const std::vector<Operation>& Operations() {
  const auto turn = [](CGContextRef c) { CGContextConcatCTM(c, {0.8, 0.6, -0.6, 0.8, 20, -5}); };
  const auto image = [](CGContextRef c) { CGContextDrawImage(c, CGRectMake(5, 5, 20, 20), The().image); };
  const auto text = [](CGContextRef c) { CTLineDraw(The().line, c); };
  static const std::vector<Operation> operations = {
      {"rectangle", &FillAll},
      {"fill", &Fill},
      {"stroke", [](CGContextRef c) { AddPath(c), CGContextDrawPath(c, kCGPathStroke); }},
      {"clip", [](CGContextRef c) { Clip(c), FillAll(c); }},
      {"clips", [=](CGContextRef c) { Clip(c), turn(c), Clip(c), turn(c), Clip(c), FillAll(c); }},
      {"image", image},
      {"image under a clip", [=](CGContextRef c) { Clip(c), turn(c), image(c); }},
      {"image, soft light",
       [=](CGContextRef c) { Clip(c), CGContextSetBlendMode(c, kCGBlendModeSoftLight), image(c); }},
      {"text", text, false, true},
      {"text under a clip, turned", [=](CGContextRef c) { Clip(c), turn(c), text(c); }, false, true},
      {"shading", [](CGContextRef c) { Clip(c), Shade(c); }, true},
      {"pattern", &FillPattern, true},
      {"text as a clip", [=](CGContextRef c) { CGContextSetTextDrawingMode(c, kCGTextClip), text(c), FillAll(c); },
       true, true},
  };
  return operations;
}

// Leaves no clip as it was before.
const Operation& ClippedOtherwise() { return Operations()[4]; }

class Canvas {
 public:
  Canvas() : pixels_(kSide * kSide * 4) {
    CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
    context_ = CGBitmapContextCreate(pixels_.data(), kSide, kSide, 8, kSide * 4, space, kCGBitmapAlphaFirst);
    CGColorSpaceRelease(space);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() { CGContextRelease(context_); }

  void Draw(const Operation& operation) {
    CGContextSaveGState(context_);
    operation.draw(context_);
    CGContextRestoreGState(context_);
  }
  CGContextRef Context() const { return context_; }
  const std::vector<unsigned char>& Pixels() const { return pixels_; }
  bool IsBlank() const { return pixels_ == std::vector<unsigned char>(pixels_.size()); }

 private:
  std::vector<unsigned char> pixels_;
  CGContextRef context_;
};

// In a thread with little room for calls within calls.
void* NestClips(void* bitmap) {
  constexpr int kDepth = 100000;
  CGContextRef context = static_cast<Canvas*>(bitmap)->Context();
  for (int i = 0; i < kDepth; ++i) {
    CGContextSaveGState(context);
    CGMutablePathRef path = CGPathCreateMutable();
    CGPathAddRect(path, nullptr, CGRectMake(20.5, 20.5, 4 + i * 1e-9, 4));
    CGContextAddPath(context, path);
    CGPathRelease(path);
    CGContextClip(context);
  }
  FillAll(context);
  for (int i = 0; i < kDepth; ++i) CGContextRestoreGState(context);
  CGContextFillRect(context, CGRectMake(0, 0, 1, 1));
  return nullptr;
}

TEST(MemoryTest, AHundredThousandClips_WithinEachOther_NeedNoStack) {
  Canvas canvas;
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, std::size_t{512} << 10);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, &NestClips, &canvas), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  const auto alpha = [&](std::size_t x, std::size_t y) { return canvas.Pixels()[(y * kSide + x) * 4]; };
  EXPECT_EQ(alpha(22, kSide - 23), 255);
  EXPECT_LE(alpha(20, kSide - 23), 1);  // half of it, a hundred thousand times, rounded
  EXPECT_EQ(alpha(26, kSide - 23), 0);
  EXPECT_EQ(alpha(0, kSide - 1), 255);  // under no clip any more
}

// Of each thread, since pango has one of its own.
constinit thread_local std::size_t sBlocks = 0;

TEST(MemoryTest, Draws_Repeated_TakeNoMemory) {
  for (const Operation& operation : Operations()) {
    Canvas canvas;
    const auto draw = [&](int count) {
      for (int i = 0; i < count; ++i) canvas.Draw(operation), canvas.Draw(ClippedOtherwise());
    };
    draw(3);
    const std::size_t before = sBlocks;
    draw(100);
    EXPECT_TRUE(operation.makes || sBlocks == before) << operation.name << " took " << sBlocks - before;
  }
}

#if !defined(AK_SANITIZED)  // a sanitizer brings its own allocator

constinit thread_local std::size_t sRefused = 0;  // this block is refused, counted from 1; 0: none
constinit thread_local bool sKeepsC = false;  // only what C++ asks for: the libraries of text end the program otherwise

bool Refuses(bool isC) {
  if (isC && sKeepsC) return false;
  return ++sBlocks == sRefused;
}

}  // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);

void* malloc(std::size_t size) { return Refuses(true) ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) { return Refuses(true) ? nullptr : __libc_calloc(count, size); }
void* realloc(void* block, std::size_t size) { return Refuses(true) ? nullptr : __libc_realloc(block, size); }
}

void* operator new(std::size_t size) {
  void* block = Refuses(false) ? nullptr : __libc_malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace {

// Draws with the n-th block refused; false when there were fewer.
bool DrawRefused(Canvas* canvas, const Operation& operation, std::size_t n) {
  sKeepsC = operation.isText;
  sBlocks = 0;
  sRefused = n;
  canvas->Draw(operation);
  sRefused = 0;
  sKeepsC = false;
  return sBlocks >= n;
}

TEST(MemoryTest, Draws_WithAnyBlockRefused_AreWholeOrNothing_AndGoOnAfterwards) {
  testing::internal::CaptureStderr();
  bool isRefused = false;
  for (const Operation& operation : Operations()) {
    std::vector<std::unique_ptr<Canvas>> drawn;
    do {
      drawn.push_back(std::make_unique<Canvas>());
    } while (DrawRefused(drawn.back().get(), operation, drawn.size()));
    Canvas whole;
    whole.Draw(operation);
    Canvas covered;
    covered.Draw({"", &FillAll});
    ASSERT_FALSE(whole.IsBlank()) << operation.name;
    EXPECT_EQ(drawn.back()->Pixels(), whole.Pixels()) << operation.name;  // nothing was left to be refused
    for (std::size_t i = 0; i < drawn.size(); ++i) {
      SCOPED_TRACE(std::string(operation.name) + ", block " + std::to_string(i + 1));
      ASSERT_TRUE(drawn[i]->IsBlank() || drawn[i]->Pixels() == whole.Pixels());
      drawn[i]->Draw({"", &FillAll});
      ASSERT_EQ(drawn[i]->Pixels(), covered.Pixels());
    }
    isRefused = isRefused || drawn.size() > 1;
  }
  EXPECT_TRUE(isRefused);
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(said, "AKPlatform: memory ran out, something was not drawn\n");
}

#endif

}  // namespace
