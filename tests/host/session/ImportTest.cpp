// What other programs made becomes objects, and objects become what they take.
#include <fstream>
#include <random>

#include "graphics/images/AGImage.h"
#include "host/listings/FindObjects.h"
#include "host/pictures/ImageHeader.h"
#include "host/session/CopiedObjects.h"
#include "tests/host/session/SessionTestSupport.h"

namespace host {
namespace {

std::string FileOf(const std::string& name) { return file_test::ReadBytes(AK_IMAGES "/" + name); }

class ImportTest : public SessionFixture {
 protected:
  void SetUp() override {
    SessionFixture::SetUp();
    pictures_ = Taken(Bundle::Load(AK_PICTURE_BUNDLE));
    session_ = std::make_unique<DocumentSession>(MakeDocument(3));
  }
  void TearDown() override { session_.reset(); }

  std::unique_ptr<Bundle> pictures_;
  std::unique_ptr<DocumentSession> session_;
};

// The bytes that say how large a pixel is, put into files that lack them, in each unit.
TEST(ImageHeaderTest, Sizes_FollowTheResolution) {
  const std::string png = FileOf("rgb8.png");
  const auto withDensity = [&png](std::uint32_t dots, char unit) {
    std::string chunk = std::string("\0\0\0\x09pHYs", 8);
    for (int each = 0; each < 2; ++each) {
      for (int shift = 24; shift >= 0; shift -= 8) chunk += static_cast<char>(dots >> shift);
    }
    return png.substr(0, 33) + chunk + unit + std::string(4, '\0') + png.substr(33);
  };
  const auto jpeg = [](char unit, char dots) {
    std::string file = FileOf("baseline.jpg");
    const std::size_t at = file.find(std::string("JFIF\0", 5));
    file.replace(at + 7, 5, {unit, '\0', dots, '\0', dots});
    return file;
  };
  // 19 by 13 pixels, so many of 16 in a unit: 1 says nothing, 2 an inch, 3 a centimetre.
  const auto tiff = [](char unit, char sixteenths) {
    std::string file("II*\0\x08\0\0\0\x05\0", 10);
    const auto entry = [&file](char tag, char type, char value) {
      file += {tag, '\x01', type, '\0', '\x01', '\0', '\0', '\0', value, '\0', '\0', '\0'};
    };
    entry(0, 3, 19);
    entry(1, 3, 13);
    entry(26, 5, 74);
    entry(27, 5, 74);
    entry(40, 3, unit);
    return file + std::string(4, '\0') + sixteenths + std::string(3, '\0') + '\x10' + std::string(3, '\0');
  };
  std::string filled = FileOf("baseline.jpg");  // bytes that may be in front of a marker, and one without a length
  filled.insert(2, "\xFF\x01\xFF\xFF");
  const struct {
    std::string bytes;
    const char* format;
    double width, height, pixel;  // map units a pixel
  } cases[] = {{png, "PNG", 19, 13, 1},
               {withDensity(5669, 1), "PNG", 19, 13, 0.5},  // 144 dots an inch
               {withDensity(5669, 0), "PNG", 19, 13, 1},    // a ratio alone
               {withDensity(0, 1), "PNG", 19, 13, 1},
               {jpeg(1, 36), "JPEG", 37, 29, 2},
               {jpeg(2, 100), "JPEG", 37, 29, 72 / 254.0},
               {filled, "JPEG", 37, 29, 1},
               {tiff(2, 32), "TIFF", 19, 13, 36},
               {tiff(3, 16), "TIFF", 19, 13, 72 / 2.54},
               {tiff(1, 32), "TIFF", 19, 13, 1},
               {FileOf("rgb8.tif"), "TIFF", 19, 13, 1},
               {FileOf("rgb8-lzw-big-endian.tif"), "TIFF", 19, 13, 1}};
  for (const auto& each : cases) {
    const auto header = ReadImageHeader(each.bytes);
    ASSERT_TRUE(header) << each.format;
    EXPECT_STREQ(header->format, each.format);
    EXPECT_EQ(header->width, each.width);
    EXPECT_EQ(header->height, each.height);
    EXPECT_NEAR(header->size.width, each.width * each.pixel, 1e-3) << each.format;
    EXPECT_NEAR(header->size.height, each.height * each.pixel, 1e-3);
    for (std::size_t length = 0; length < 24; ++length) {
      EXPECT_FALSE(ReadImageHeader(each.bytes.substr(0, length))) << length;
    }
  }
}

TEST_F(ImportTest, WhatCanNotBeTaken_ChangesNothing) {
  const std::string png = FileOf("rgb8.png");
  std::string huge = png;
  huge.replace(16, 8, std::string("\0\1\0\0\0\1\0\0", 8));
  std::string deep;
  for (int i = 0; i < 257; ++i) deep += i == 0 ? "<svg>" : "<g>";
  const std::pair<std::string, const char*> cases[] = {
      {"", "no PNG"},
      {"words", "no PNG"},
      {png.substr(0, png.size() - 30), "damaged"},
      {huge, "65536"},
      {"<svg", "no XML"},
      {"<svg>\xFF</svg>", "no XML"},
      {"<svg width='9' height='9'><rect width='5' height='5'/><!--\x9F--></svg>", "no XML"},
      {std::string("<svg width='9' height='9'><rect width='5' height='5'/><!--\0--></svg>", 68), "no XML"},
      {"<html/>", "no SVG"},
      {"<svg width='0' height='1'/>", "no size"},
      {"<!DOCTYPE svg [<!ENTITY a 'b'>]><svg>&a;</svg>", "entities"},
      {"<svg>&a;</svg>", "no XML"},
      {deep, "256 deep"},
      {"<svg><circle/><rect width='0' height='5'/><defs><rect width='1' height='1'/></defs></svg>", "none of its 1"},
      {"<svg><pattern id='a'/><rect width='1' height='1' fill='url(#a)'/></svg>", "1 have paint"},
      {"<svg><g id='a'><use href='#b'/><use href='#b'/></g><g id='b'><use href='#a'/></g></svg>", "none of its 0"}};
  const std::string before = Bytes(*session_);
  for (const auto& [bytes, words] : cases) {
    EXPECT_NE(Said(session_->Import().Take(bytes, {})).find(words), std::string::npos)
        << words << ": " << Said(session_->Import().Take(bytes, {}));
  }
  pictures_.reset();
  EXPECT_NE(Said(session_->Import().Take(png, {})).find("no bundle"), std::string::npos);
  EXPECT_EQ(Bytes(*session_), before);
  EXPECT_EQ(session_->Steps().Known().Count(), 0U);
}

TEST_F(ImportTest, Images_KeepTheirBytes_InOneStep) {
  const std::string png = FileOf("rgba8.png");
  const std::string before = Bytes(*session_);
  ImportPlace place;
  place.middle = AGPoint{100, 50};
  EXPECT_EQ(Taken(session_->Import().Take(png, place)).taken, 1U);
  const DocumentObject& object = *session_->Doc().Find(session_->Selection().IDs()[0]);
  EXPECT_EQ(object.bounds.Center(), (AGPoint{100, 50}));
  EXPECT_NE(Bytes(*session_).find(png), std::string::npos);
  EXPECT_TRUE(session_->Steps().Undo());
  EXPECT_EQ(Bytes(*session_), before);
  EXPECT_EQ(session_->Steps().Known().Count(), 1U);
}

// Rectangles at random places, turned, scaled and put into groups: their corners are where the numbers of the
// transforms put them.
TEST_F(ImportTest, Rectangles_LieWhereTheirTransformsPutThem) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto number = [&random](double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  };
  for (int i = 0; i < 200; ++i) {
    const double x = number(-50, 50), y = number(-50, 50), w = number(1, 80), h = number(1, 80);
    const double tx = number(-30, 30), ty = number(-30, 30), s = number(0.2, 3), degrees = number(-180, 180);
    const std::string text = "<svg width='200' height='100' viewBox='0 0 400 200'><g transform='translate(" +
                             std::to_string(tx) + " " + std::to_string(ty) + ") rotate(" + std::to_string(degrees) +
                             ")'><rect x='" + std::to_string(x) + "' y='" + std::to_string(y) + "' width='" +
                             std::to_string(w) + "' height='" + std::to_string(h) + "' transform='scale(" +
                             std::to_string(s) + ")'/></g></svg>";
    const SvgPicture picture = Taken(ReadSvg(text));
    ASSERT_EQ(picture.rectangles.size(), 1U) << text;
    AGPoint corners[4];
    GetTurnedCorners({picture.rectangles[0].bounds, picture.rectangles[0].angle}, corners);
    const double c = std::cos(degrees * 3.14159265358979 / 180), t = std::sin(degrees * 3.14159265358979 / 180);
    const AGPoint wanted[4] = {{x, y + h}, {x + w, y + h}, {x + w, y}, {x, y}};  // y down: these are the lower ones
    for (int k = 0; k < 4; ++k) {
      const AGPoint p{wanted[k].x * s, wanted[k].y * s};
      const AGPoint drawn{p.x * c - p.y * t + tx, p.x * t + p.y * c + ty};  // of 400 by 200, on 150 by 75 units
      EXPECT_NEAR(corners[k].x, drawn.x * 0.375, 1e-3) << text;
      EXPECT_NEAR(corners[k].y, 75 - drawn.y * 0.375, 1e-3);
    }
  }
}

TEST_F(ImportTest, Rectangles_InheritTheirPaint) {
  const SvgPicture picture = Taken(ReadSvg(
      "\xEF\xBB\xBF<?xml version='1.0'?><svg:svg xmlns:svg='s' width='1in' height='72pt'>"
      "<g fill='#f00' stroke='rgb(0, 50%,255)' stroke-width='2pt' opacity='0.5' stroke-dasharray='4pt' "
      "stroke-linecap='round'>"
      "<svg:rect width='50%' height='1cm' rx='9' style='fill-opacity:.5; stroke: none'/>"
      "<rect width='10' height='20' rx='100' fill='none'/><g display='none'><rect width='1' height='1'/></g></g>"
      "<rect width='1' height='1' transform='skewX(10)'/><rect width='1' height='1' visibility='hidden'/></svg:svg>"));
  EXPECT_EQ(picture.size.width, 72);
  EXPECT_NEAR(picture.size.height, 72, 1e-9);
  EXPECT_EQ(picture.elements, 3U);
  ASSERT_EQ(picture.rectangles.size(), 2U);
  const auto& [first, second] = std::tie(picture.rectangles[0], picture.rectangles[1]);
  EXPECT_NEAR(first.bounds.Width(), 36, 1e-9);
  EXPECT_NEAR(first.bounds.Height(), 72 / 2.54, 1e-9);
  EXPECT_NEAR(first.rounding, 2 * 9 * 0.75 / (72 / 2.54), 1e-9);
  EXPECT_EQ(first.brush.Color(), AGColor(255, 0, 0, 128));
  EXPECT_EQ(first.opacity, 0.5);
  EXPECT_EQ(first.pen.Brush().Style(), kAGBrushStyleNone);
  EXPECT_EQ(second.rounding, 1);
  EXPECT_EQ(second.brush.Style(), kAGBrushStyleNone);
  EXPECT_EQ(second.pen.Brush().Color(), AGColor(0, 128, 255));
  EXPECT_NEAR(second.strokeWidth, 2, 1e-9);
  EXPECT_EQ(second.pen.LineCap(), kAGPenLineCapRound);
  EXPECT_EQ(second.dashes, (std::vector<double>{2, 2}));
}

// Each picture is drawn by hand, and by what is taken of it: at points of its 8 by 8 pixels, of 6 map units.
TEST_F(ImportTest, WhatIsTaken_ShowsWhatThePictureShows) {
  const AGColor red(255, 0, 0), none(0, 0, 0, 0), blue(0, 0, 255), green(0, 128, 0);
  struct Point {
    double x, y;
    AGColor color;
  };
  const auto mixed = [](double blueness) {
    const auto part = [](double value) { return static_cast<unsigned char>(std::lround(value * 255)); };
    return AGColor(part(1 - blueness), 0, part(blueness));
  };
  const std::string stops = "<stop stop-color='red'/><stop offset='1' stop-color='#00f'/>";
  const struct {
    std::string inside;
    std::vector<Point> points;
    const char* note = "";  // part of what is said
  } cases[] = {
      {"<style>/* {} */ .a { fill: red } rect.a#r, .b { fill: blue !important } g rect { fill: lime }</style>"
       "<rect class='b' width='4' height='8' fill='lime'/><rect id='r' class='x a' x='4' width='4' height='8'/>",
       {{2, 2, blue}, {6, 2, blue}},
       "1 style rules"},
      {"<defs><g id='a' fill='green'><rect id='c' width='2' height='2'/></g></defs><use xlink:href='#a' x='4' y='4'/>",
       {{5, 5, green}, {1, 1, none}}},
      {"<symbol id='s' viewBox='0 0 1 1'><rect width='1' height='1' fill='red'/></symbol>"
       "<use href='#s' x='2' width='4' height='4'/>",
       {{4, 2, red}, {4, 5, none}, {1, 2, none}}},
      {"<svg x='4' y='2' width='4' height='2' viewBox='0 0 10 10' preserveAspectRatio='xMaxYMin'>"
       "<rect width='10' height='10' fill='red'/><rect x='-10' width='10' height='20' fill='blue'/></svg>",
       {{7, 3, red}, {5, 3, none}, {7, 5, none}},
       "1 are clipped"},
      {"<linearGradient id='l'>" + stops +
           "</linearGradient><rect width='8' height='4' fill='url(#l)'/>"
           "<rect y='4' width='8' height='4' fill='url(#no) green'/>",
       {{2, 2, mixed(0.25)}, {6, 1, mixed(0.75)}, {4, 6, green}}},
      {"<linearGradient id='o'>" + stops +
           "</linearGradient><linearGradient id='l' href='#o' gradientUnits="
           "'userSpaceOnUse' x1='0' y1='8' x2='0' y2='0'/><rect width='8' height='8' fill='url(#l)' transform='scale(1 "
           ".5)'/>",
       {{2, 3, mixed(0.25)}, {6, 1, mixed(0.75)}}},
      {"<linearGradient id='l' gradientTransform='rotate(90)'>" + stops +
           "</linearGradient>"
           "<rect width='8' height='8' fill='url(#l)' transform='matrix(1 0 0 -1 0 8)'/>",
       {{2, 6, mixed(0.25)}, {6, 2, mixed(0.75)}}},
      {"<radialGradient id='l' cx='0' cy='0' r='.707'>" + stops +
           "</radialGradient>"
           "<rect width='8' height='4' fill='url(#l)'/>",
       {{2.828, 0.02, mixed(0.5)}, {0.02, 2.12, mixed(0.75)}, {7, 3, blue}}},
      {"<radialGradient id='l'>" + stops + "</radialGradient><rect width='8' height='8' fill='url(#l)'/>",
       {{4, 2, mixed(0.5)}, {4, 4, red}},
       "1 have gradients"},
      {"<rect width='4' height='8' rx='2' ry='4'/><rect x='4' width='4' height='8' transform='skewX(1)'/>"
       "<circle r='1'/><rect width='1' height='1' filter='url(#f)'/><rect width='1em' height='1'/>",
       {{2, 1, kAGColorBlack}},
       "1 of 5 elements were taken; 1 are no rectangles; 1 are sheared, which a rectangle can't be; 1 are clipped, "
       "masked, filtered or blended; 1 have paint, lengths or transforms that are not understood; 1 have corners that "
       "are not circles: taken with the smaller radius"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.inside);
    DocumentSession session(std::make_unique<Document>(AGSize{48, 48}));
    const auto taken = session.Import().Take(
        "<svg xmlns:xlink='x' viewBox='0 0 8 8' width='64' height='64'>" + each.inside + "</svg>", {});
    ASSERT_TRUE(taken) << Said(taken);
    const std::string said = taken->Summary() ? taken->Summary()->English() : "";
    EXPECT_TRUE(*each.note == 0 ? said.empty() : said.find(each.note) != said.npos) << said;
    const auto pixels = Drawn(session.Doc());
    for (const Point& point : each.points) {
      const auto at = [](double pixel) { return static_cast<std::size_t>(std::min(pixel * 6, 47.0)); };
      const AGColor drawn = pixels[(47 - at(point.y)) * 48 + at(point.x)];
      for (const auto& [a, b] : {std::pair{drawn.Red(), point.color.Red()},
                                 {drawn.Green(), point.color.Green()},
                                 {drawn.Blue(), point.color.Blue()},
                                 {drawn.Alpha(), point.color.Alpha()}}) {
        EXPECT_NEAR(a, b, 9) << point.x << ", " << point.y;
      }
    }
  }
}

// Wherever they came from, and turned: the middle of what is pasted is where it was asked for.
TEST_F(ImportTest, PastedObjects_LieAboutTheirPlace) {
  const ObjectIDs ids = {ID(*session_, 0), ID(*session_, 2)};
  ASSERT_TRUE(session_->Objects().Rotate(ids, 0.7));
  const std::string copied = session_->Clipboard().Copy(ids);
  const std::string before = Bytes(*session_);
  const std::size_t steps = session_->Steps().Known().Count();
  ASSERT_TRUE(session_->Clipboard().PasteAt(copied, {-40, 33}));
  AGRect box;
  ASSERT_TRUE(session_->Selection().GetBox(session_->Selection().IDs(), &box));
  EXPECT_NEAR(box.Center().x, -40, 1e-9);
  EXPECT_NEAR(box.Center().y, 33, 1e-9);
  EXPECT_EQ(session_->Steps().Known().Count(), steps + 1);
  EXPECT_FALSE(session_->Clipboard().PasteAt("words", {0, 0}));
  EXPECT_TRUE(session_->Steps().Undo());
  EXPECT_EQ(Bytes(*session_), before);
}

// What is copied comes back from the file that other programs are given; an SVG picture of it has it where it was.
TEST_F(ImportTest, CopiedObjects_ComeBack) {
  const ObjectIDs ids = {ID(*session_, 0), ID(*session_, 2)};
  ASSERT_TRUE(session_->Marks().Group(ids));
  const CopiedObjects copied(session_->Clipboard().Copy(ids), session_->Doc());
  EXPECT_EQ(Taken(CopiedFromDocument(Taken(copied.AsDocument()))), copied.Bytes());
  const std::string svg = Taken(copied.AsPicture(PictureKind::kSVG));
  EXPECT_NE(svg.find("width=\"51"), std::string::npos) << svg;  // 0 to 50, and half a pen on each side
  EXPECT_EQ(Taken(copied.AsPicture(PictureKind::kPNG)).substr(1, 3), "PNG");
  for (const char* bad : {"", "words", "HDoc"}) EXPECT_FALSE(CopiedFromDocument(bad)) << bad;
  EXPECT_FALSE(CopiedFromDocument(Taken(copied.AsDocument()).substr(0, 100)));
}

TEST_F(ImportTest, Objects_AreFoundByWhatTheyAre) {
  AddPlaceholder(session_.get());
  const ObjectID red = ID(*session_, 1);
  const LayerID layer = session_->Layers().Add("Notes");
  ASSERT_TRUE(session_->Objects().SetProperties({red}, {{"Brush.Color", "(255;0;0;9)"}, {"Pen.Brush.Style", "None"}}));
  Taken(session_->Import().Take(FileOf("rgb8.png"), {}));
  const auto count = [this](const Wanted& wanted) { return FindObjects(session_->Doc(), wanted).size(); };
  EXPECT_EQ(count({}), 5U);
  EXPECT_EQ(count({.classID = AKClassID("stdRect")}), 3U);
  EXPECT_EQ(count({.layer = layer}), 1U);
  EXPECT_EQ(FindObjects(session_->Doc(), {.fill = ParsePaint("Red")}), ObjectIDs{red});
  EXPECT_EQ(count({.stroke = ParsePaint("none")}), 2U);
  EXPECT_EQ(count({.stroke = ParsePaint("none"), .name = "rect"}), 1U);
  EXPECT_EQ(count({.name = "RECTANGLE"}), 3U);
  EXPECT_EQ(count({.name = "strange"}), 1U);
  EXPECT_EQ(count({.name = "png"}), 1U);  // a text that the picture has
  for (const char* bad : {"", "reddish", "#12", "1,2", "1,2,3,4"}) EXPECT_FALSE(ParsePaint(bad)) << bad;
}

}  // namespace
}  // namespace host
