// platform/headless/RecordingSurface.cpp: the log lines, and what colour lies where.
#include "platform/headless/RecordingSurface.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "support/TextLines.h"
#include "support/TextPrefixes.h"
#include "values/Text.h"

namespace velkor {
namespace {

std::string Number(double value) {
  const double rounded = std::round(value * 1000) / 1000;
  char text[64];
  std::snprintf(text, sizeof text, "%.3f", rounded == 0 ? 0.0 : rounded);
  std::string number = text;
  number.erase(number.find_last_not_of('0') + 1);
  if (number.ends_with('.')) number.pop_back();
  return number;
}

std::string Numbers(const Rect& rect) {
  return Number(rect.left) + ' ' + Number(rect.top) + ' ' + Number(rect.right) + ' ' +
         Number(rect.bottom);
}

std::string Hexadecimal(const char* format, unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

std::string Name(Colour colour) {
  return Hexadecimal("#%06X", unsigned(colour.Red() << 16 | colour.Green() << 8 | colour.Blue()));
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < 0x20) {
      quoted += Hexadecimal("\\x%02X", static_cast<unsigned char>(c));
      continue;
    }
    if (c == '"' || c == '\\') quoted.push_back('\\');
    quoted.push_back(c);
  }
  return quoted + '"';
}

double CharacterCount(std::string_view text) {
  int characters = 0;
  for (; !text.empty(); ++characters) TakeCharacter(text);
  return characters;
}

std::string Name(const Font& font) {
  std::string name = "font ";
  if (!font.face.empty()) name += Quoted(font.face) + ' ';
  name += Number(font.size);
  if (font.bold) name += " bold";
  if (font.italic) name += " italic";
  if (font.charset != charsets::Default) name += " charset " + std::to_string(font.charset);
  return name;
}

}  // namespace

Rect RecordingSurface::Absolute(const Rect& rect) const {
  const Point origin = Origin();
  return {rect.left + origin.x, rect.top + origin.y, rect.right + origin.x, rect.bottom + origin.y};
}

void RecordingSurface::Paint(PixelRect area, Colour colour) {
  area = pixels_.Clipped(area);
  if (area.Width() > 0 && area.Height() > 0) painted_.push_back({area, colour});
}

void RecordingSurface::Fill(const Rect& rect, Colour colour) {
  log_.push_back("fill " + Numbers(Absolute(rect)) + ' ' + Name(colour));
  Paint(pixels_.Pixels(rect), colour);
}

void RecordingSurface::Outline(const Rect& rect, Colour colour, int pen) {
  log_.push_back("outline " + Numbers(Absolute(rect)) + ' ' + Name(colour) + " pen " +
                 std::to_string(pen));
  for (const PixelRect& bar : OutlineBars(pixels_.Pixels(rect), pen)) Paint(bar, colour);
}

void RecordingSurface::Line(Point from, Point to, Colour colour, int pen) {
  const Rect ends{from.x, from.y, to.x, to.y};
  log_.push_back("line " + Numbers(Absolute(ends)) + ' ' + Name(colour) + " pen " +
                 std::to_string(pen));
  const PixelRect pixels = pixels_.Pixels(ends);
  const bool straight = pixels.Width() == 0 || pixels.Height() == 0;
  if (straight) Paint(LineBar(pixels, pen), colour);
}

void RecordingSurface::Text(const Rect& rect, std::string_view text, const Font& font,
                            Colour colour, TextFlags flags) {
  log_.push_back("text " + Numbers(Absolute(rect)) + ' ' + Quoted(text) + ' ' + Name(colour) + ' ' +
                 Name(font) + " flags " + Hexadecimal("0x%X", flags));
}

Extent RecordingSurface::Measure(std::string_view text, const Font& font) {
  ++measured_;
  return {CharacterCount(text) * font.size * 20 / 2, font.size * 20 * 1.2};
}

Extent RecordingSurface::MeasureLines(std::string_view text, const Font& font, Twips width,
                                      TextFlags flags) {
  ++measured_;
  const bool literal = (flags & text_flags::NoPrefix) != 0;
  const std::string all = literal ? std::string(text) : WithoutPrefixes(text);
  const Twips character = font.size * 20 / 2;
  return LinesExtent(all, width, font.size * 20 * 1.2,
                     [&](std::string_view piece) { return CharacterCount(piece) * character; });
}

void RecordingSurface::EnterView(const Rect& clip, Point origin) {
  const View view{Absolute(clip), {Origin().x + origin.x, Origin().y + origin.y}};
  log_.push_back("view " + Numbers(view.clip) + " origin " + Number(view.origin.x) + ' ' +
                 Number(view.origin.y));
  views_.push_back(view);
  pixels_.Enter(clip, origin);
}

void RecordingSurface::LeaveView() {
  if (views_.empty()) throw std::logic_error("LeaveView without EnterView");
  views_.pop_back();
  pixels_.Leave();
  log_.emplace_back("leave");
}

void RecordingSurface::LogPicture(const Rect& rect) {
  log_.push_back("picture " + Numbers(Absolute(rect)));
}

std::vector<std::string> RecordingSurface::Calls(std::string_view kind) const {
  std::vector<std::string> calls;
  std::copy_if(log_.begin(), log_.end(), std::back_inserter(calls), [&](const std::string& line) {
    return std::string_view(line).substr(0, line.find(' ')) == kind;
  });
  return calls;
}

std::optional<Colour> RecordingSurface::ColourAt(Point point) const {
  const int x = static_cast<int>(std::floor(point.x / static_cast<double>(Pixel().width)));
  const int y = static_cast<int>(std::floor(point.y / static_cast<double>(Pixel().height)));
  const auto reaches = [&](const Painted& painted) {
    const PixelRect& area = painted.area;
    return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
  };
  const auto last = std::find_if(painted_.rbegin(), painted_.rend(), reaches);
  if (last == painted_.rend()) return std::nullopt;
  return last->colour;
}

void RecordingSurface::Clear() {
  log_.clear();
  painted_.clear();
  measured_ = 0;
}

}  // namespace velkor
