// A screen of 40 lines of 80 letters with soft edges: drawn, and laid out anew and drawn, beside SDL_ttf's
// blended surfaces of the same lines in the same letters, which are rendered once and only blitted. Both draw
// onto 16 bits. Then what laying out costs for texts of up to a mebibyte, wrapped into 700 pixels.

#include <SDL_ttf.h>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "ratio_reporter.h"
#include "text/font_collection.h"
#include "text/font_maker.h"
#include "text/multiline_text6.h"

namespace footlight::bench {

namespace {

constexpr CXSize kScreen(800, 600);
constexpr int kLines = 40;
constexpr int kLetters = 80;
constexpr const char* kFontFile = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr int kFontSize = 11;

TTF_Font* openFont() {
  if (TTF_Init() != 0) std::abort();
  TTF_Font* font = TTF_OpenFont(kFontFile, kFontSize);
  if (font == nullptr) std::abort();
  return font;
}

FontLetter renderLetter(TTF_Font* font, char letter) {
  const std::string text(1, letter);
  SDL_Surface* surface = TTF_RenderUTF8_Blended(font, text.c_str(), {0, 0, 0, 255});
  FontLetter made;
  made.letter = static_cast<std::uint8_t>(letter);
  made.size = {surface->w + 2, surface->h + 2};  // its rim is emptied
  made.pixels.resize(static_cast<std::size_t>(made.size.width * made.size.height));
  made.alpha.resize(made.pixels.size());
  for (int y = 0; y < surface->h; ++y) {
    const auto* row = reinterpret_cast<const std::uint32_t*>(static_cast<const char*>(surface->pixels) +
                                                             y * surface->pitch);
    for (int x = 0; x < surface->w; ++x)
      made.alpha[static_cast<std::size_t>((y + 1) * made.size.width + x + 1)] =
          static_cast<std::uint8_t>(row[x] >> 24);
  }
  SDL_FreeSurface(surface);
  return made;
}

// The font of the engine, made of the peer's letters; without kerning, which the peer's has not.
Owned<CFontCollection> makeFonts(TTF_Font* font) {
  std::vector<FontLetter> letters;
  for (char letter = '!'; letter <= '~'; ++letter) letters.push_back(renderLetter(font, letter));
  std::optional<FntFont> made = makeFont(std::move(letters));
  if (!made) std::abort();
  std::ranges::fill(made->kerning, std::int8_t{0});
  Owned<CFontCollection> fonts(new CFontCollection(nullptr));
  Owned<CSimpleFont6> single(new CSimpleFont6(nullptr));
  single->take(std::move(*made));
  fonts->addFont(std::move(single));
  return fonts;
}

std::string words(std::size_t letters, char between) {
  static constexpr std::string_view kVowels = "aeiou";
  std::mt19937 random(1);
  std::string text;
  for (std::size_t i = 0; i < letters; ++i) {
    const bool isBlank = i % 7 == 6;
    text += isBlank ? between : i % 2 != 0 ? kVowels[random() % 5] : static_cast<char>('b' + random() % 25);
  }
  return text;
}

std::vector<std::string> screenLines() {
  std::vector<std::string> lines;
  const std::string all = words(std::size_t{kLines} * kLetters, ' ');
  for (int i = 0; i < kLines; ++i) {
    lines.push_back(all.substr(static_cast<std::size_t>(i) * kLetters, kLetters));
    lines.back().front() = lines.back().back() = 'o';
  }
  return lines;
}

CXString screenText() {
  std::string text;
  for (const std::string& line : screenLines()) text += line + "|";
  return text;
}

struct Engine {
  Engine() : fonts(makeFonts(openFont())), text(new CMultilineText6(nullptr, false, nullptr)) {
    text->setJustify({0, 0, kScreen.width, kScreen.height}, _justify::left, _justify::top);
    text->setFont(fonts.get());
    text->setText(screenText());
    if (text->lineCount() != kLines) std::abort();
  }
  Owned<CFontCollection> fonts;
  Owned<CMultilineText6> text;
  CGraphicsObject screen{nullptr, kScreen, 16};
};

void engineDraws(benchmark::State& state) {
  Engine engine;
  for (auto round : state) {
    (void)round;
    engine.text->redraw(&engine.screen);
  }
}

void engineLaysOutAndDraws(benchmark::State& state) {
  Engine engine;
  const CXString text = screenText();
  for (auto round : state) {
    (void)round;
    engine.text->setText(text);
    engine.text->redraw(&engine.screen);
  }
}

void ttfBlits(benchmark::State& state) {
  TTF_Font* font = openFont();
  SDL_Surface* screen =
      SDL_CreateRGBSurfaceWithFormat(0, kScreen.width, kScreen.height, 16, SDL_PIXELFORMAT_RGB565);
  std::vector<SDL_Surface*> lines;
  for (const std::string& line : screenLines())
    lines.push_back(TTF_RenderUTF8_Blended(font, line.c_str(), {0, 0, 0, 255}));
  for (auto round : state) {
    (void)round;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      SDL_Rect at = {0, static_cast<int>(i) * lines[i]->h, 0, 0};
      SDL_BlitSurface(lines[i], nullptr, screen, &at);
    }
  }
  for (SDL_Surface* line : lines) SDL_FreeSurface(line);
  SDL_FreeSurface(screen);
}

void setText(benchmark::State& state, const char* between) {
  Engine engine;
  engine.text->setJustify({0, 0, 700, 600}, _justify::left, _justify::top);
  const CXString text = words(static_cast<std::size_t>(state.range(0)), *between);
  for (auto round : state) {
    (void)round;
    engine.text->setText(text);
  }
  state.counters["lines"] = engine.text->lineCount();
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(engineDraws)->Name("engine/draw")->Unit(benchmark::kMicrosecond);
BENCHMARK(ttfBlits)->Name("SDL_ttf/draw")->Unit(benchmark::kMicrosecond);
BENCHMARK(engineLaysOutAndDraws)->Name("engine/lay out and draw")->Unit(benchmark::kMicrosecond);
BENCHMARK(ttfBlits)->Name("SDL_ttf/lay out and draw")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(setText, words, " ")
    ->Name("set text")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1 << 20)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(setText, lines, "|")
    ->Name("set lines of six")
    ->Arg(10000)
    ->Arg(1 << 20)
    ->Unit(benchmark::kMicrosecond);

}  // namespace footlight::bench

int main(int count, char** words) { return footlight::bench::runAll(count, words); }
