#include "AxisOracle.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace xov::oracle {

namespace {

// One operation, one rounding.
float add(float a, float b) {
  volatile float r = a + b;
  return r;
}
float sub(float a, float b) {
  volatile float r = a - b;
  return r;
}
float mul(float a, float b) {
  volatile float r = a * b;
  return r;
}
float quo(float a, float b) {
  volatile float r = a / b;
  return r;
}

int whole(float a) { return int(a); }

float lg(double a) {
  volatile float r = float(log10l(static_cast<long double>(a)));
  return r;
}

float tenTo(int n) {
  char text[16];
  snprintf(text, sizeof text, "1e%d", n);
  volatile float r = float(strtod(text, nullptr));
  return r;
}

std::string printed(const char* format, int width, int decimals, float v) {
  char text[256];
  snprintf(text, sizeof text, format, width, decimals, double(v));
  return text;
}

struct Step {
  float step;
  int n;
  int m;
};

Step givenStep(float c) {
  float e = lg(double(c));
  if (e < 0) e = sub(e, 1);
  return {c, whole(e), 0};
}

// The raw step, split into digit and power; rounding the digit differs between the axes.
Step rawStep(float lo, float u, int nt) {
  if (nt < 5) nt = 5;
  const float raw = quo(sub(u, lo), float(nt));
  float e = raw > 0 ? lg(double(raw)) : 0;
  if (e < 0) e = sub(e, 1);
  const int n = whole(e);
  return {raw, n, whole(mul(raw, tenTo(-n)))};
}

struct Ends {
  float t0;
  float t1;
  int count;
};

Ends endsOf(float lo, float u, float step) {
  int i0 = whole(quo(lo, step));
  float t0 = mul(step, float(i0));
  if (lo > t0) {
    i0 = i0 + 1;
    t0 = add(t0, step);
  }
  int i1 = whole(quo(u, step));
  float t1 = mul(step, float(i1));
  if (t1 > u) {
    i1 = i1 - 1;
    t1 = sub(t1, step);
  }
  return {t0, t1, i1 - i0 + 1};
}

float awayFromZero(float l) { return l >= 0 ? add(l, 1.001f) : sub(l, 0.999f); }

float valueDigits(const Ends& ends) {
  const float a = fabsf(ends.t0) > fabsf(ends.t1) ? fabsf(ends.t0) : fabsf(ends.t1);
  return awayFromZero(lg(double(a) + 0.001));
}

std::string suffixOf(int n) {
  char text[64];
  snprintf(text, sizeof text, " x 10^%+.*d", 2, n);
  return text;
}

Drawing xAxis(const Call& c) {
  Drawing out;
  const float L = float(c.left), R = float(c.right), B = float(c.bottom), T = float(c.top), fs = float(c.fontSize);
  const float lo = c.lower, u = c.upper;
  const float W = sub(R, L);
  const float k = quo(W, sub(u, lo));

  Step s;
  if (c.interval != 0) {
    s = givenStep(c.interval);
  } else {
    s = rawStep(lo, u, whole(quo(W, mul(fs, fs))));
    if (s.m > 10) {
      s.m = 1;
      s.n++;
    } else if (s.m > 5) {
      s.m = 5;
    } else {
      s.m = 2;
    }
    s.step = mul(float(s.m), tenTo(s.n));
  }
  const Ends ends = endsOf(lo, u, s.step);
  const float lm = valueDigits(ends);
  const float ls = awayFromZero(lg(double(s.step)));

  int width = 0, decimals = 0;
  float f = 1;
  const float agreement = mul(lm, ls);
  if (agreement >= 0) {
    const double left = double(W) - ceil(log10(double(ends.t1))) * ends.count * 0.5 * double(fs);
    if (left <= 0 && c.powerFlag) {
      width = whole(lm) - whole(ls);
      if (width < 1) width = 1;
      f = tenTo(-s.n);
      if (s.n != 0) out.suffix = suffixOf(s.n);
    } else {
      if (ls < 0) decimals = whole(fabsf(ls));
      width = lm < 1 ? whole(lm) : 1;
    }
  } else {
    if (ls < 0) decimals = whole(fabsf(ls));
    width = lm > 0 ? whole(lm) : 0;
    if (decimals > 0) width = width + decimals + 2;
  }
  out.negativeWidth = width < 0;

  out.lines.push_back({L, B, R, B});
  out.lines.push_back({L, T, R, T});

  float v = mul(ends.t0, f);
  float p = add(mul(sub(ends.t0, lo), k), L);
  const float dv = mul(s.step, f);
  const float dp = mul(s.step, k);
  int minors = 1;
  if (dp >= mul(0.1f, W)) minors = s.m == 5 ? 4 : 3;
  if (dp >= mul(0.25f, W)) minors = 9;
  const float ds = quo(dp, float(minors + 1));
  out.minors = minors;

  const auto pair = [&](float at, float size) {
    out.lines.push_back({at, B, at, add(B, mul(size, fs))});
    if (T != B) out.lines.push_back({at, T, at, sub(T, mul(size, fs))});
  };
  const bool shown = c.secondaryTicks != 0 && c.mode > 0;
  float q = sub(p, dp);
  for (int i = 0; i < minors; i++) {
    q = add(q, ds);
    if (q >= L && shown) pair(q, 0.375f);
  }
  for (int tick = 0; tick < ends.count; tick++) {
    if (c.mode > 0) pair(p, 0.75f);
    if (c.mode > 1) {
      out.texts.push_back({printed("%*.*f", width, decimals, v), 2, whole(p), whole(sub(B, mul(1.25f, fs)))});
    }
    q = p;
    for (int i = 0; i < minors; i++) {
      q = add(q, ds);
      if (R >= q && shown) pair(q, 0.375f);
    }
    v = add(v, dv);
    p = add(p, dp);
  }
  out.noTicks = ends.count <= 0;
  return out;
}

Drawing yAxis(const Call& c) {
  Drawing out;
  const float L = float(c.left), R = float(c.right), B = float(c.bottom), T = float(c.top);
  const float lo = c.lower, u = c.upper;
  const float x0 = c.side == 2 ? R : L;
  const float fs = c.side == 2 ? -float(c.fontSize) : float(c.fontSize);
  const float H = sub(T, B);
  const float k = quo(H, sub(u, lo));

  Step s;
  if (c.interval != 0) {
    s = givenStep(c.interval);
  } else {
    s = rawStep(lo, u, abs(whole(quo(H, mul(float(10 * c.fontSize), fs)))));
    if (s.m > 5) {
      s.m = 1;
      s.n++;
    } else if (s.m > 2) {
      s.m = 5;
    } else {
      s.m = 2;
    }
    s.step = mul(float(s.m), tenTo(s.n));
  }
  const Ends ends = endsOf(lo, u, s.step);
  const float lm = valueDigits(ends);
  const float ls = awayFromZero(lg(double(s.step)));

  int width = 0, decimals = 0;
  float f = 1;
  const int g = lm < 0 ? whole(lm) : whole(ls);
  if (mul(lm, ls) < 0) {
    if (ls < 0) decimals = whole(fabsf(ls));
    width = lm > 0 ? whole(lm) : 0;
    if (decimals > 0) width = width + decimals + 2;
  } else if (abs(g) >= 3 && c.powerFlag) {
    width = whole(lm) - whole(ls) + 2;
    if (width < 4) width = 4;
    f = tenTo(-s.n);
    out.suffix = suffixOf(s.n);
  } else {
    if (ls < 0) decimals = whole(fabsf(ls));
    width = lm > 1 ? whole(lm) : 1;
    if (decimals > 0) width = width + decimals + 2;
  }

  out.lines.push_back({x0, B, x0, T});
  out.lines.push_back({R, B, R, T});

  float v = mul(ends.t0, f);
  float p = add(mul(sub(ends.t0, lo), k), B);
  const float dv = mul(s.step, f);
  const float dp = mul(s.step, k);
  int minors = 1;
  if (fabsf(dp) >= mul(0.1f, fabsf(H))) minors = s.m == 5 ? 4 : 3;
  if (fabsf(dp) > mul(0.25f, fabsf(H))) minors = 9;
  const float ds = quo(dp, float(minors + 1));
  out.minors = minors;

  const auto pair = [&](float at, float size) {
    out.lines.push_back({x0, at, add(x0, mul(size, fs)), at});
    out.lines.push_back({R, at, sub(R, mul(size, fs)), at});
  };
  const bool shown = c.secondaryTicks != 0 && c.mode > 0;
  float q = sub(p, dp);
  for (int i = 0; i < minors; i++) {
    q = add(q, ds);
    if (q > B && shown) pair(q, 0.5f);
  }
  bool negativeDrawn = false;
  for (int tick = 0; tick < ends.count; tick++) {
    if (c.mode > 0) pair(p, 0.75f);
    if (c.positiveDown) v = -v;
    if (c.mode > 1) {
      std::string text;
      if (v >= 0) {
        text = printed(negativeDrawn ? "% *.*f" : "%*.*f", width, decimals, v);
        if (negativeDrawn) out.blankSign = true;
      } else {
        negativeDrawn = true;
        text = printed("%+*.*f", width + 1, decimals, v);
      }
      out.texts.push_back({text, 3, whole(sub(x0, mul(0.2f, fs))), whole(sub(p, mul(0.5f, fs)))});
    }
    q = p;
    for (int i = 0; i < minors; i++) {
      q = add(q, ds);
      if (q > B && T > q && shown) pair(q, 0.5f);
    }
    if (c.positiveDown) v = -v;
    v = add(v, dv);
    p = add(p, dp);
  }
  out.noTicks = ends.count <= 0;
  return out;
}

} // namespace

Drawing drawAxis(const Call& c) {
  const float L = float(c.left), B = float(c.bottom), T = float(c.top), fs = float(c.fontSize);
  const int middle = (c.left + c.right) / 2;
  Drawing out;
  Text label;
  if (c.axis == 1 && c.side == 3) {
    out = xAxis(c);
    label = {"", 2, middle, whole(sub(B, mul(2.5f, fs)))};
  } else if (c.axis == 1 && c.side == 4) {
    out = xAxis(c);
    label = {"", 1, middle, whole(add(T, mul(2.5f, fs)))};
  } else if (c.axis == 2 && c.side == 1) {
    out = yAxis(c);
    label = {"", 1, whole(sub(L, mul(2, fs))), whole(add(T, mul(0.5f, fs)))};
  } else if (c.axis == 2 && c.side == 2) {
    out = yAxis(c);
    label = {"", 2, whole(add(L, mul(3.5f, fs))), whole(add(mul(add(B, T), 0.5f), T))};
  } else {
    return out;
  }
  if (c.mode > 1) {
    label.text = out.suffix;
    out.texts.push_back(label);
  }
  return out;
}

std::string Call::toText() const {
  char text[400];
  snprintf(
      text, sizeof text,
      "frame left %d right %d top %d bottom %d, font %d, axis %d side %d mode %d, lower %.9g upper %.9g interval "
      "%.9g, power %d, secondary %d, positive down %d",
      left, right, top, bottom, fontSize, axis, side, mode, double(lower), double(upper), double(interval), powerFlag,
      secondaryTicks, positiveDown);
  return text;
}

} // namespace xov::oracle
