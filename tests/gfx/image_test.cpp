#include "gfx/image.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/file.h"
#include "files/rle_compression.h"
#include "foundation/byte_writer.h"
#include "foundation/diagnose.h"
#include "foundation/limits.h"
#include "gfx/animo.h"
#include "gfx/image_file.h"
#include "gfx/img_format.h"
#include "gfx/jpeg.h"
#include "support/screen_world.h"

namespace footlight {
namespace {

using test::ScreenWorld;
using Bytes = std::vector<std::byte>;

struct Header {
  int width = 2, height = 2, bpp = 16, packing = 0, alphaSize = 0, x = 3, y = -4;
};

Bytes imgFile(const Header& h, const Bytes& planes) {
  ByteWriter out;
  out.field("PIK", 4);
  // The field of the colour's size is not read: nonsense.
  for (const int value : {h.width, h.height, h.bpp, 99, 0, h.packing, h.alphaSize, h.x, h.y}) out.i32(value);
  return out.bytes(planes).take();
}

std::string text(const Bytes& bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

Bytes pixels16(std::initializer_list<int> values) {
  ByteWriter out;
  for (const int value : values) out.number(value, 2);
  return out.take();
}

Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

const Bytes kPlain = pixels16({0x1111, 0x2222, 0x3333, 0x4444});
const Bytes kAlpha = {std::byte{0}, std::byte{255}, std::byte{7}, std::byte{8}};

TEST(ImgFormat, ReadsTheFieldsOfThePlainAndTheRunLengthForm) {
  const char* why = nullptr;
  const auto plain = readImg(imgFile({.alphaSize = 4}, kPlain + kAlpha), &why);
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->size, CXSize(2, 2));
  EXPECT_EQ(plain->bpp, 16);
  EXPECT_EQ(plain->position, CXPoint(3, -4));
  EXPECT_EQ(plain->colour, kPlain);
  EXPECT_EQ(plain->alpha, kAlpha);

  const auto packed = readImg(imgFile({.packing = 4}, CRLECompression::compress(kPlain)), &why);
  ASSERT_TRUE(packed);
  EXPECT_EQ(packed->compression, _compression::rle);
  EXPECT_FALSE(packed->hasAlpha);

  for (const auto& [field, bpp] : {std::pair{2, 15}, {4, 16}, {8, 24}, {15, 15}, {24, 24}}) {
    const Bytes planes(bpp == 24 ? 12 : 8);
    const auto picture = readImg(imgFile({.bpp = field}, planes), &why);
    ASSERT_TRUE(picture) << field;
    EXPECT_EQ(picture->bpp, bpp);
  }
}

TEST(ImgFormat, KeepsToTheLimitsOfPictures) {
  const int side = limits::kPictureSide;
  struct Row {
    int width, height;
    bool isRead;
  };
  const Row rows[] = {{0, 1, false},        {1, -2, false},       {side, 1, true},
                      {side + 1, 1, false}, {side, 1024, true},   {side, 1025, false},
                      {side, side, false},  {1, side + 1, false}, {0x7FFFFFFF, 0x7FFFFFFF, false}};
  for (const Row& row : rows) {
    const char* why = nullptr;
    const Bytes file = imgFile({.width = row.width, .height = row.height, .packing = 4}, {});
    EXPECT_EQ(readImg(file, &why).has_value(), row.isRead) << row.width << "x" << row.height;
    EXPECT_EQ(why == nullptr, row.isRead);
  }
  const Bytes whole = imgFile({.packing = 4, .alphaSize = 2}, kPlain);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const char* why = nullptr;
    EXPECT_EQ(readImg(std::span(whole).first(length), &why).has_value(), length >= 42) << length;
  }
}

TEST(Image, GoesThroughTheStatesOfItsPixels) {
  struct Row {
    _compression form, loaded;  // as the file has it, and behind `Load`
  };
  for (const auto& [form, loaded] :
       {Row{_compression::none, _compression::none}, Row{_compression::lzw, _compression::none},
        Row{_compression::lzwOverRle, _compression::rle}, Row{_compression::rle, _compression::rle}}) {
    ScreenWorld world;
    world.open();
    const Bytes packedAlpha = packPlane(form, Plane::alpha, kAlpha);
    const Header header{.packing = static_cast<int>(form), .alphaSize = static_cast<int>(packedAlpha.size())};
    world.folder.write("a.img", text(imgFile(header, packPlane(form, Plane::colour, kPlain) + packedAlpha)));
    CImage image(world.window.get());
    CFile file(world.window.get(), "a.img", CFile::kReadBinary);
    ASSERT_EQ(image.Load(&file), 0);
    EXPECT_EQ(image.getCompression(), loaded);
    image.pack(true);
    EXPECT_EQ(image.getCompression(), loaded) << "nothing was unpacked";
    image.unpack();
    EXPECT_TRUE(std::ranges::equal(image.pixels().bytes(), kPlain));
    EXPECT_TRUE(std::ranges::equal(image.AlphaChannel().bytes(), kAlpha));
    image.bringBackCompressed();
    EXPECT_EQ(image.getCompression(), _compression::none) << "what was unpacked is packed by `pack` alone";
    image.Convert(15);
    image.pack(true);
    EXPECT_EQ(image.getCompression(), loaded);
    EXPECT_EQ(image.getBpp(), loaded == _compression::none ? 15 : 16) << "the packed form kept its format";
    image.DeCompressRLE2();
    image.bringBackCompressed();
    EXPECT_EQ(image.getCompression(), loaded);
    image.Compress(_compression::lzw);
    EXPECT_EQ(image.getCompression(), loaded);
    image.Compress(_compression::rle);
    EXPECT_EQ(image.getCompression(), _compression::rle);
  }
}

// Two grey blocks, 40 and 200.
constexpr const char* kGreyJpeg =
    "ffd8ffe000104a46494600010100000100010000ffdb00430001010101010101010101010101010101010101010101010101"
    "010101010101010101010101010101010101010101010101010101010101010101010101010101ffc0000b08000800100101"
    "1100ffc4001500010100000000000000000000000000000a0bffc40014100100000000000000000000000000000000ffda00"
    "08010100003f0027ea803fffd9";

Bytes fromHex(std::string_view hex) {
  Bytes out;
  for (std::size_t i = 0; i < hex.size(); i += 2)
    out.push_back(static_cast<std::byte>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
  return out;
}

TEST(Jpeg, DecodesIntoBothFormats) {
  const Bytes file = fromHex(kGreyJpeg);
  const auto pixelsOf = [&](int bpp) {
    JPEG picture(file);
    EXPECT_EQ(CXSize(picture.getWidth(), picture.getHeight()), CXSize(16, 8));
    const Bytes bytes = picture.decompress(bpp);
    EXPECT_TRUE(picture.decompress(bpp).empty()) << "once only";
    EXPECT_EQ(picture.LastError(), 0);
    return bytes;
  };
  const auto row = [](int left, int right) {
    return pixels16({left, left, left, left, left, left, left, left, right, right, right, right, right, right,
                     right, right});
  };
  Bytes sixteen, fifteen;
  for (int y = 0; y < 8; ++y) {
    sixteen = sixteen + row(5 << 11 | 10 << 5 | 5, 25 << 11 | 50 << 5 | 25);
    fifteen = fifteen + row(5 << 10 | 5 << 5 | 5, 25 << 10 | 25 << 5 | 25);
  }
  EXPECT_EQ(pixelsOf(16), sixteen);
  EXPECT_EQ(pixelsOf(24), sixteen);
  EXPECT_EQ(pixelsOf(15), fifteen);
}

TEST(Jpeg, GivesAReasonForWhatItCannotRead) {
  const Bytes file = fromHex(kGreyJpeg);
  const auto frame = std::ranges::search(file, std::array{std::byte{0xFF}, std::byte{0xC0}}).begin();
  const auto sized = [&](int height, int width) {
    Bytes changed = file;
    auto* at = changed.data() + (frame - file.begin()) + 5;
    at[0] = static_cast<std::byte>(height >> 8);
    at[1] = static_cast<std::byte>(height & 0xFF);
    at[2] = static_cast<std::byte>(width >> 8);
    at[3] = static_cast<std::byte>(width & 0xFF);
    return changed;
  };
  const int side = limits::kPictureSide;
  for (const Bytes& bad : {Bytes(), Bytes(100), Bytes(file.begin(), file.begin() + 20), sized(0, 8),
                           sized(1, side + 1), sized(1025, side), sized(65535, 65535)}) {
    JPEG picture(bad);
    EXPECT_EQ(picture.LastError(), CFile::kNotFound) << bad.size();
    EXPECT_FALSE(picture.why().empty());
    EXPECT_EQ(picture.getWidth(), 0);
    EXPECT_TRUE(picture.decompress(16).empty());
  }
  EXPECT_EQ(JPEG(sized(1, side)).decompress(16).size(), static_cast<std::size_t>(side) * 2);
  // Data that end early are a picture all the same.
  EXPECT_EQ(JPEG(std::span(file).first(file.size() - 6)).decompress(16).size(), 256u);
}

// The frames say to be small, and few bytes keep the decoder busy for long.
TEST(Jpeg, ShareWhatOneFileMayCost) {
  constexpr int kSide = 4096;
  const std::string hex = kGreyJpeg;
  const std::size_t scanAt = hex.find("ffda");
  std::string busy = hex.substr(0, scanAt);
  busy.replace(busy.find("ffc0"), 18, "ffc2000b0810001000");
  for (int i = 0; i < 30; ++i)
    busy +=
        "ffda0008010100000000"
        "27ea803f";
  AnnFile file;
  AnnFrame frame;
  frame.size = {2, 2};
  frame.compression = _compression::jpeg;
  frame.colour = fromHex(busy + "ffd9");
  file.frames.assign(4, frame);

  static_assert(limits::kScannedPixels / (std::int64_t{kSide} * kSide * 30) == 2);
  ScreenWorld world;
  world.open();
  world.folder.write("busy.ann", text(writeAnn(file)));
  CAnimo animation(world.window.get(), "busy.ann");
  ASSERT_EQ(animation.GetNOF(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(animation.GetFrame(i)->Width(), i < 2 ? 2 : 0) << i;
}

TEST(Jpeg, IsReadByNameInTheDisplaysFormat) {
  for (const int bpp : {15, 16, 32}) {
    ScreenWorld world({64, 48}, bpp);
    world.open();
    world.folder.write("a.jpg", text(fromHex(kGreyJpeg)));
    world.folder.write("b.other", text(fromHex(kGreyJpeg)));
    CImage image(world.window.get());
    EXPECT_EQ(image.Load("a.jpg", true), 0);
    EXPECT_TRUE(image.isLoaded());
    EXPECT_EQ(image.getBpp(), bpp == 15 ? 15 : 16);
    EXPECT_EQ(image.GetPixel(8, 0).value(),
              bpp == 15 ? 25u << 10 | 25u << 5 | 25u : 25u << 11 | 50u << 5 | 25u);
    EXPECT_EQ(image.Load("b.other", true), 0) << "only .img is no JPEG";
  }
}

TEST(Image, LoadsConvertsAndShowsAPictureFile) {
  for (const bool packed : {false, true}) {
    ScreenWorld world;
    world.open();
    const Header header{.bpp = 15, .packing = packed ? 4 : 0, .alphaSize = packed ? 5 : 4};
    const Bytes planes =
        packed ? CRLECompression::compress(kPlain) + CRLECompression::compresschar(kAlpha) : kPlain + kAlpha;
    world.folder.write("a.IMG", text(imgFile(header, planes)));
    CImage image(world.window.get());
    image.Visible(false);
    EXPECT_EQ(image.Load("A.Img", true), 0);
    EXPECT_TRUE(image.isVisible());
    EXPECT_TRUE(image.isLoaded());
    EXPECT_EQ(image.getFileName(), "A.Img");
    EXPECT_EQ(image.GetPosition(), CXPoint(3, -4));
    EXPECT_EQ(image.getBpp(), 16) << "the display's format";
    EXPECT_EQ(image.GetPixel(1, 0).value(), (0x2222u & 0x1F) | (0x2222u & 0xFFC0) << 1);
    EXPECT_EQ(image.GetPixel(_channel::alpha, {1, 1}), 8);
    EXPECT_EQ(image.GetPixel(_channel::alpha, {2, 1}), 0);
  }
}

TEST(Image, DrawsAPackedPictureThatNobodyUnpacked) {
  ScreenWorld world;
  world.open();
  world.folder.write("a.img",
                     text(imgFile({.packing = 4, .x = 0, .y = 0}, CRLECompression::compress(kPlain))));
  CImage image(world.window.get());
  CFile file(world.window.get(), "a.img", CFile::kReadBinary);
  EXPECT_EQ(image.Load(&file), 0);
  EXPECT_EQ(image.getCompression(), _compression::rle);
  EXPECT_EQ(image.GetPixel(0, 0).value(), 0u) << "packed pixels are black";
  world.screen().put(&image, 0);
  world.window->Redraw();
  EXPECT_EQ(world.pixel(1, 1), 0x4444u);
  image.pack(true);
  EXPECT_EQ(image.getCompression(), _compression::rle);
  image.unpack();
  EXPECT_EQ(image.GetPixel(1, 1).value(), 0x4444u);
}

TEST(Image, AnswersTwoThousandForAFileItCannotRead) {
  ScreenWorld world;
  world.open();
  world.folder.write("bad.img", "no picture at all, but long enough to be more than a header");
  CImage image(world.window.get());
  for (const char* name : {"missing.img", "bad.img", "bad.jpg", "", ".img"}) {
    EXPECT_EQ(image.Load(name, true), CFile::kNotFound) << name;
    EXPECT_FALSE(image.isLoaded());
    EXPECT_TRUE(image.GetDataPtr().empty());
  }
  CImageFile file(world.window.get());
  EXPECT_EQ(file.Load("bad.pcx"), _filetype::unknown);
  EXPECT_EQ(file.object(), nullptr);
  EXPECT_EQ(file.Load("bad.img"), _filetype::image);
  EXPECT_EQ(file.object()->LastError(), CFile::kNotFound);
  world.window->SetBackground(CXString("bad.img"));
  world.window->Redraw();
}

TEST(Image, SavesTheBytesOfTheForm) {
  ScreenWorld world;
  world.open();
  world.folder.write("a.img", text(imgFile({.alphaSize = 4}, kPlain + kAlpha)));
  CImage image(world.window.get(), "a.img");
  EXPECT_EQ(image.Save("copy.img", _compression::none), 0);
  Bytes expected = imgFile({.alphaSize = 4}, kPlain + kAlpha);
  expected[16] = std::byte{8};
  EXPECT_EQ(world.folder.read("copy.img"), text(expected));

  // Cut to the clipping rectangle.
  image.SetClippingRect({1, 0, 2, 2});
  EXPECT_EQ(image.Save("cut.img", _compression::none), 0);
  Bytes cut =
      imgFile({.width = 1, .alphaSize = 2, .x = 4}, pixels16({0x2222, 0x4444}) + Bytes{kAlpha[1], kAlpha[3]});
  cut[16] = std::byte{4};
  EXPECT_EQ(world.folder.read("cut.img"), text(cut));

  // The screen itself.
  image.SetClippingRect({});
  image.AlphaChannel(PixelBlock());
  image.placeAt({0, 0});
  world.screen().put(&image, 0);
  world.window->Redraw();
  EXPECT_EQ(world.screen().Save("screen.img", _compression::none), 0);
  CImage screen(world.window.get(), "screen.img");
  EXPECT_EQ(screen.Size(), CXSize(64, 48));
  EXPECT_EQ(screen.GetPixel(1, 1).value(), 0x4444u);
  EXPECT_EQ(image.Save("..\\outside.img", _compression::none), CFile::kNotFound);
}

// Objects that share

TEST(GraphicsObject, SharersSeeChangesInPlaceAndKeepTheirOwnBlocks) {
  ScreenWorld world;
  world.open();
  world.folder.write("a.img", text(imgFile({.bpp = 15, .alphaSize = 4}, kPlain + kAlpha)));
  CImage image(world.window.get());
  image.Load("a.img", false);
  const std::unique_ptr<CXObject> copy = image.clone();
  auto& clone = static_cast<CImage&>(*copy);
  EXPECT_TRUE(clone.getFileName().IsEmpty());
  image.Convert(16);
  EXPECT_EQ(clone.getBpp(), 16);
  clone.Convert(16);
  EXPECT_EQ(clone.GetPixel(0, 0).value(), (0x1111u & 0x1F) | (0x1111u & 0xFFC0) << 1) << "converted once";
  CColor colour(0x0FF0, _colormodel::bpp16);
  clone.Fill(CXRect(0, 0, 1, 1), &colour);
  EXPECT_EQ(image.GetPixel(0, 0).value(), 0x0FF0u);
  image.Flush();
  EXPECT_EQ(clone.GetPixel(0, 0).value(), 0x0FF0u);

  CGraphicsObject linked(world.window.get());
  linked.link(clone);
  clone.FlipV();
  EXPECT_EQ(linked.GetPixel(1, 0).value(), 0x0FF0u);
  EXPECT_EQ(linked.GetPixel(_channel::alpha, {0, 0}), 255);
  clone.resetFlips();
  EXPECT_EQ(linked.GetPixel(0, 0).value(), 0x0FF0u);
}

TEST(GraphicsObject, FlipsPackedPixelsAndPacksThemAgain) {
  ScreenWorld world;
  CGraphicsObject object(world.window.get(), {3, 2}, PixelBlock(pixels16({1, 2, 3, 4, 5, 6}), 16));
  object.Compress(_compression::rle);
  object.FlipH();
  object.FlipV();
  EXPECT_EQ(object.getCompression(), _compression::rle);
  object.unpack();
  EXPECT_EQ(object.GetPixel(0, 0).value(), 6u);
  EXPECT_EQ(object.GetPixel(2, 1).value(), 1u);
  object.resetFlips();
  EXPECT_EQ(object.GetPixel(0, 0).value(), 1u);
}

TEST(GraphicsObject, KeepsItsPlaceByAnchorAndBox) {
  ScreenWorld world;
  CGraphicsObject object(world.window.get(), {10, 6}, 16);
  object.setAnchor(4, 2);
  object.SetPosition(20, 20);
  EXPECT_EQ(object.GetPosition(), CXPoint(16, 18));
  object.SetClippingRect({2, 2, 5, 30});
  EXPECT_EQ(object.GetBoundingBox(), CXRect(18, 20, 21, 24));
  object.SetClippingRect({});
  object.placeAt({-3, -2});
  EXPECT_EQ(object.GetBoundingBox(), CXRect(0, 0, 7, 4));
  EXPECT_EQ(object.GetAbsoluteBoundingBox(), CXRect(-3, -2, 7, 4));
  EXPECT_TRUE(object.isNear(CXRect(0, 0, 7, 2), 50));
  EXPECT_FALSE(object.isNear(CXRect(0, 0, 7, 2), 51));
  object.FitRect({0, 0, 25, 25});
  EXPECT_EQ(object.GetPosition(), CXPoint(7, 9));
  object.placeAt({0x7FFFFFFF, -0x7FFFFFFF});
  object.Move(100, -100);
  object.Invalidate();
  object.redraw(&object);
}

class Watcher : public CGraphicsObject {
 public:
  using CGraphicsObject::CGraphicsObject;
  void onInvalidate(CGraphicsObject* object, CXRect* rect) override {
    rects.push_back(*rect);
    CGraphicsObject::onInvalidate(object, rect);
  }
  std::vector<CXRect> rects;
};

TEST(GraphicsObject, TellsItsObserversAndStopsAtTheDepthLimit) {
  ScreenWorld world;
  world.open();
  resetGuardHits();
  auto seen = std::make_unique<CGraphicsObject>(world.window.get(), CXSize(10, 10), 16);
  Watcher watcher(world.window.get(), {20, 20}, 16);
  seen->addInvalidateObserver(&watcher);
  CXRect part(2, 2, 30, 4);
  CXRect outside(10, 0, 30, 4);
  seen->Invalidate(&part);
  seen->Invalidate(&outside);
  EXPECT_THAT(watcher.rects, testing::ElementsAre(CXRect(2, 2, 10, 4)));
  EXPECT_TRUE(watcher.isInvalidated());
  EXPECT_FALSE(watcher.isInvalidated());
  watcher.addInvalidateObserver(seen.get());
  seen->Invalidate();
  EXPECT_GT(guardHits("nested runs"), 0) << "two that observe each other come to an end";
  resetGuardHits();
  seen.reset();
  watcher.Invalidate();
  EXPECT_EQ(guardHits("nested runs"), 0);
}

}  // namespace
}  // namespace footlight
