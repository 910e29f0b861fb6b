// What nearly every source of the library includes; precompiled when XOV_PCH is on. Sources still include what they
// use: the target xov_headers_alone and builds without XOV_PCH hold them to it.
#include <QColor>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTransform>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>
