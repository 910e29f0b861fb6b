#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/graphics/AxisCodes.h"

#include <QDateTime>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace xov {

class Path;
class TextAttributes;

#if defined(_MSC_VER)
#define XOV_PER_THREAD // variables of a DLL cannot be a thread's: there only one thread draws
#else
#define XOV_PER_THREAD thread_local
#endif

// A small procedural drawing layer: a pen that appends lines to the caller's path, strings and numbers at a point,
// and linear axes with ticks and labels. It owns no surface. Pen operations only add to the path that ASetPath()
// named, and the caller strokes that path, as a rule once an axis; text goes at once to GraphicsContext::current().
//
// Each thread has a state of its own. A view draws its axes in this order:
// AInitGraphLib, ASetPath with its emptied path, ASetTickLabelAttributes, ASetAxisRect, then ASetLineWidth,
// ASetFontSize and the power flags where wanted, then the axes, and strokes its path.
//
// Coordinates are view points, y upwards from the lower left; "top" is the larger y. All globals are 0 until the
// first AInitGraphLib().

/// Reserved; nothing reads or writes it.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gDevice;
/// A font number: AInitGraphLib() sets it to 20; nothing reads it.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gFont;
/// The font size in points that tick lengths, label offsets and the number of ticks follow from. It does not change
/// the font that labels are drawn in (see ASetTickLabelAttributes). AInitGraphLib() sets it to 18.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gFontsize;
/// How the next string lies about its point, see ASetJustify(). AInitGraphLib() sets it to 1.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gJustify;
/// Reserved; nothing reads or writes it. The line width goes to the path, see ASetLineWidth().
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gPenWidth;
/// Other than 0, the tick labels of Y axes have their signs inverted, for values that count downwards such as depth.
/// Only the host sets it; AInitGraphLib() leaves it alone.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gPosDown;
/// Other than 0, X axes have secondary ticks. AInitGraphLib() sets it to 1.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gXsecTic;
/// Other than 0, Y axes have secondary ticks. AInitGraphLib() sets it to 1.
extern XOV_EXPORT XOV_PER_THREAD std::int32_t gYsecTic;

/// Resets font, font size, justification, secondary ticks, both power flags (0) and the path (none); the label
/// attributes, the axis rectangle, gDevice, gPenWidth and gPosDown stay.
XOV_EXPORT void AInitGraphLib();

/// Other than 0, labels that would not fit beside each other on an X axis are divided by a power of ten, which then
/// stands in the axis label.
XOV_EXPORT void ASetXAxisPowerFlag(int flag);

/// Other than 0, labels of a Y axis that would have three digits or more before or behind the point are divided by a
/// power of ten, which then stands in the axis label.
XOV_EXPORT void ASetYAxisPowerFlag(int flag);

/// Names the path that pen operations append to. It is not kept alive: without it (null, or gone since) pen
/// operations do nothing.
XOV_EXPORT void ASetPath(const std::shared_ptr<Path>& path);

/// Names the attributes that strings are drawn with. They are not kept alive and are read whenever a string is drawn,
/// so later changes to them show; without them (null, or gone since) TextAttributes() serves.
XOV_EXPORT void ASetTickLabelAttributes(const std::shared_ptr<const TextAttributes>& attributes);

/// Sets gFontsize, in points.
XOV_EXPORT void ASetFontSize(int points);

/// Sets gJustify. With a text box of width w and height h, a string at x starts at
///     1, and any other code    x
///     2                        x - w/2
///     3                        x - w
///     4                        x - h/2
///     5                        x - w/2 - h/2
///     6                        x - w - h/2
/// The lower edge of the box is at the string's y with every code.
XOV_EXPORT void ASetJustify(int code);
/// The codes by name; the last three are for text that is turned upright.
enum class AJustify : int { Left = 1, Center = 2, Right = 3, LeftTurned = 4, CenterTurned = 5, RightTurned = 6 };
/// The same by name.
inline void ASetJustify(AJustify justify) { ASetJustify(int(justify)); }

/// The line width of the path, in points.
XOV_EXPORT void ASetLineWidth(float width);

/// Starts a new line of the path at (x, y).
XOV_EXPORT void AMove(int x, int y);
/// Draws a straight line from the current point of the path to (x, y).
XOV_EXPORT void ALine(int x, int y);
/// Starts a new line of the path at (x, y). A coordinate that is not finite lifts the pen.
XOV_EXPORT void AFMove(float x, float y);
/// Draws a straight line from the current point of the path to (x, y), unless a coordinate is not finite.
XOV_EXPORT void AFLine(float x, float y);

/// Draws a string at (x, y), justified by gJustify. Beyond ASCII it is read as UTF-8, so that a label may hold a
/// degree sign; a byte that is not part of a character shows as U+FFFD. A null string draws nothing.
XOV_EXPORT void ADrawStr(const char* text, int x, int y);

/// Draws the string level, with the lower left corner of its box at the origin of the current coordinate system,
/// whatever the point, the angle and the justification are; then restores the graphics state that the caller must
/// have saved. To place the string, save the state and concat() a transform first; for text at an angle, use the
/// views' own text operations. A state that was not saved is not restored.
XOV_EXPORT void ADrawStrAtAngle(const char* text, int x, int y, float angleDegrees);

/// Draws a number with its sign, also a plus, and `decimals` digits behind the point (at most 32; 6 when negative) at
/// (x, y), justified by gJustify. Numbers above 1e4, below 1e-4 and 0 itself are written with an exponent. A text of
/// more than 31 characters stops the program with a message on standard error.
XOV_EXPORT void ADrawFloat(float value, int decimals, int x, int y);

/// Draws an integer at (x, y), justified by gJustify. `width` has no effect.
XOV_EXPORT void ADrawInt(int value, int width, int x, int y);

/// The frame of the following axes. Each value is truncated to a whole point and kept as 16 bits, so that values
/// beyond -32768 to 32767 wrap around; NaN counts as 0.
XOV_EXPORT void ASetAxisRect(float left, float right, float top, float bottom);

/// The size of a suffix buffer in bytes, terminator included. A buffer of n bytes whose text is shorter than
/// n - kAxisSuffixSize characters always has room for what ADrawAxis() appends.
inline constexpr std::size_t kAxisSuffixSize = 16;

/// Draws one axis of the frame set with ASetAxisRect(): its lines, its ticks, its tick labels and with them the axis
/// label: the text in `label`, to which the power-of-ten suffix is appended. The label stands below the frame
/// (bottom, centred), above it (top, starting at the centre), at the upper left corner (left) or above the frame
/// (right), and leaves its justification in gJustify.
///
/// `lower` and `upper` are the data values at the left or bottom and at the right or top end; `interval` is the
/// distance of major ticks in the same unit. Equal, infinite or NaN limits, and an interval that asks for more than
/// 5000 ticks, draw the frame and the label only.
///
/// The suffix is always drawn, but the buffer stays as it is when the suffix does not fit into it. A text without
/// terminator ends where the buffer ends.
XOV_EXPORT void ADrawAxis(std::span<char> label, AxisSide side, AxisDetail detail, float lower, float upper,
                          float interval = kAutomaticInterval);

/// The same with codes: `axis` 1 is X, with `side` 3 (bottom) or 4 (top); `axis` 2 is Y, with `side` 1 (left) or 2
/// (right); any other combination draws nothing. `mode` 0 and below draws the frame lines, 1 adds the ticks, 2 and
/// above the labels.
XOV_EXPORT void ADrawAxis(std::span<char> label, int axis, int side, int mode, float lower, float upper,
                          float interval);

/// The same for a label buffer of unknown size, which must have room for the suffix, see kAxisSuffixSize. Null stands
/// for an empty label.
XOV_EXPORT void ADrawAxis(char* label, int axis, int side, int mode, float lower, float upper, float interval);

/// Draws an X axis that shows UTC: both horizontal edges of the frame set with ASetAxisRect() with ticks at round
/// moments (see utcTicks()), labels below, and below these the label in the middle, the date of the lower limit at
/// the left end and, where it is another one, that of the upper limit at the right end. `lower` and `upper` are
/// seconds since `reference`. What utcTicks() has no ticks for gets the frame and the label alone. Leaves gJustify
/// at 2.
XOV_EXPORT void ADrawUtcAxis(const QString& label, const QDateTime& reference, double lower, double upper);

/// Draws one logarithmic axis of the frame set with ASetAxisRect(): its lines and ticks at both edges, its tick
/// labels (see logTicks()) and its label, where ADrawAxis() has them. The limits are the decimal logarithms of the
/// data values at the left or bottom and at the right or top end. What logTicks() has no ticks for gets the frame and
/// the label alone.
XOV_EXPORT void ADrawLogAxis(const QString& label, AxisSide side, double lowerLog10, double upperLog10);

/// Draws an X axis without its label: both horizontal edges of the frame, ticks inwards from both (from the lower one
/// alone when the frame has no height) and labels below the frame. Sides 3 and 4 draw the same. Mind that `upper`
/// comes before `lower`; otherwise the arguments are those of ADrawAxis(). Labels leave gJustify at 2.
///
/// The power-of-ten suffix, such as " x 10^+05", or an empty text is written to `suffix`, of at least kAxisSuffixSize
/// bytes; null leaves it out.
XOV_EXPORT void AXlinAxis(int side, char* suffix, int mode, float upper, float lower, float interval);

/// Draws a Y axis without its label: both vertical edges of the frame with ticks and, left of the axis line, labels.
/// Side 2 draws both edges, all ticks and the labels at the right end of the frame. Leaves gJustify at 3; the other
/// arguments are those of AXlinAxis().
XOV_EXPORT void AYlinAxis(int side, char* suffix, int mode, float upper, float lower, float interval);

} // namespace xov
