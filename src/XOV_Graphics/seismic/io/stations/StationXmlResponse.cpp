#include "XOV_Graphics/seismic/io/stations/StationXmlResponse.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/io/stations/StationXmlValues.h"

#include <algorithm>

namespace xov {

namespace {

constexpr std::size_t kMostStages = 100;
constexpr std::size_t kMostCoefficients = 10'000;
constexpr std::size_t kMostFrequencies = 100'000;

struct VariableName {
  const char* text;
  TransferVariable variable;
};

constexpr VariableName kVariables[] = {
    {"LAPLACE (RADIANS/SECOND)", TransferVariable::LaplaceRadians},
    {"LAPLACE (HERTZ)", TransferVariable::LaplaceHertz},
    {"DIGITAL (Z-TRANSFORM)", TransferVariable::Digital},
    {"ANALOG (RADIANS/SECOND)", TransferVariable::LaplaceRadians},
    {"ANALOG (HERTZ)", TransferVariable::LaplaceHertz},
    {"DIGITAL", TransferVariable::Digital},
};

class ResponseElement {
public:
  explicit ResponseElement(XmlElements& xml) : xml_(xml) {}

  InstrumentResponse read(const QString& name) {
    InstrumentResponse response;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("InstrumentSensitivity")) {
        response.sensitivity = readSensitivity();
      } else if (element == QLatin1String("Stage")) {
        append(response.stages, readStage(), kMostStages, "stages");
      } else {
        return false;
      }
      return true;
    });
    std::ranges::stable_sort(response.stages, {}, &ResponseStage::number);
    if (!problem_.text.isEmpty())
      response.problem = QStringLiteral("%1: line %2: %3").arg(name).arg(problem_.line).arg(problem_.text);
    return response;
  }

private:
  template <typename Value>
  void append(std::vector<Value>& values, Value value, std::size_t most, const char* what) {
    if (values.size() < most) {
      values.push_back(std::move(value));
    } else {
      problem_.note(xml_.lineNumber(), QStringLiteral("more than %1 %2").arg(most).arg(QLatin1String(what)));
    }
  }

  /// Each is gone through at every frequency, so they are counted together.
  template <typename Value>
  void appendCoefficient(std::vector<Value>& values, Value value) {
    if (coefficients_ < kMostCoefficients) {
      values.push_back(value);
      ++coefficients_;
    } else {
      problem_.note(xml_.lineNumber(),
                    QStringLiteral("more than %1 coefficients, poles and zeros").arg(kMostCoefficients));
    }
  }

  double number() { return takeNumber(xml_, problem_).value_or(0); }

  QString unitsName() {
    QString units;
    xml_.readChildren("Name", [&] { units = xml_.elementText(); });
    return units;
  }

  /// Reads the units of a stage or a sensitivity; false at any other element.
  bool readUnits(QStringView element, QString& input, QString* output) {
    if (element == QLatin1String("InputUnits")) {
      input = unitsName();
    } else if (element == QLatin1String("OutputUnits") && output != nullptr) {
      *output = unitsName();
    } else {
      return false;
    }
    return true;
  }

  std::optional<Sensitivity> readSensitivity() {
    std::optional<double> value;
    Sensitivity sensitivity;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("Value")) {
        value = number();
      } else if (element == QLatin1String("Frequency")) {
        sensitivity.frequencyHz = number();
      } else {
        return readUnits(element, sensitivity.inputUnits, nullptr);
      }
      return true;
    });
    if (!value) return {};
    sensitivity.value = *value;
    return sensitivity;
  }

  ResponseStage readStage() {
    ResponseStage stage;
    const qint64 line = xml_.lineNumber();
    const QString number = xml_.attribute("number").trimmed();
    const auto known = toNumber<std::int32_t>(number.toUtf8());
    if (!known) problem_.note(line, QStringLiteral("Stage: found no number"));
    stage.number = known.value_or(0);
    xml_.readEach([&](QStringView element) { return readOfStage(element, stage); });
    return stage;
  }

  bool readOfStage(QStringView element, ResponseStage& stage) {
    if (element == QLatin1String("PolesZeros")) {
      stage.filter = readPolesAndZeros(stage);
    } else if (element == QLatin1String("Coefficients")) {
      stage.filter = readCoefficients(stage);
    } else if (element == QLatin1String("FIR")) {
      stage.filter = readFir(stage);
    } else if (element == QLatin1String("ResponseList")) {
      stage.filter = readList(stage);
    } else if (element == QLatin1String("Polynomial")) {
      stage.filter = PolynomialStage();
      xml_.readEach([&](QStringView child) { return readUnits(child, stage.inputUnits, &stage.outputUnits); });
    } else if (element == QLatin1String("Decimation")) {
      stage.decimation = readDecimation();
    } else if (element == QLatin1String("StageGain")) {
      readGain(stage);
    } else {
      return false;
    }
    return true;
  }

  TransferVariable variable() {
    const qint64 line = xml_.lineNumber();
    const QString written = xml_.elementText();
    const auto known = std::ranges::find_if(
        kVariables, [&](const VariableName& name) { return written == QLatin1String(name.text); });
    if (known != std::end(kVariables)) return known->variable;
    constexpr qsizetype kQuotedCharacters = 40;
    problem_.note(line, "unknown kind of transfer function \"" + written.left(kQuotedCharacters).simplified() + "\"");
    return TransferVariable::LaplaceRadians;
  }

  std::complex<double> readComplex() {
    const qint64 line = xml_.lineNumber();
    std::optional<double> real;
    std::optional<double> imaginary;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("Real")) {
        real = number();
      } else if (element == QLatin1String("Imaginary")) {
        imaginary = number();
      } else {
        return false;
      }
      return true;
    });
    if (!real || !imaginary) problem_.note(line, QStringLiteral("a pole or zero without a real or imaginary part"));
    return {real.value_or(0), imaginary.value_or(0)};
  }

  PolesAndZeros readPolesAndZeros(ResponseStage& stage) {
    PolesAndZeros filter;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("PzTransferFunctionType")) {
        filter.variable = variable();
      } else if (element == QLatin1String("NormalizationFactor")) {
        filter.normalization = number();
      } else if (element == QLatin1String("NormalizationFrequency")) {
        filter.normalizationHz = number();
      } else if (element == QLatin1String("Zero")) {
        appendCoefficient(filter.zeros, readComplex());
      } else if (element == QLatin1String("Pole")) {
        appendCoefficient(filter.poles, readComplex());
      } else {
        return readUnits(element, stage.inputUnits, &stage.outputUnits);
      }
      return true;
    });
    return filter;
  }

  FilterCoefficients readCoefficients(ResponseStage& stage) {
    FilterCoefficients filter;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("CfTransferFunctionType")) {
        filter.variable = variable();
      } else if (element == QLatin1String("Numerator")) {
        appendCoefficient(filter.numerators, number());
      } else if (element == QLatin1String("Denominator")) {
        appendCoefficient(filter.denominators, number());
      } else {
        return readUnits(element, stage.inputUnits, &stage.outputUnits);
      }
      return true;
    });
    return filter;
  }

  FilterCoefficients readFir(ResponseStage& stage) {
    FilterCoefficients filter;
    QString symmetry = QStringLiteral("NONE");
    const qint64 line = xml_.lineNumber();
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("Symmetry")) {
        symmetry = xml_.elementText();
      } else if (element == QLatin1String("NumeratorCoefficient")) {
        appendCoefficient(filter.numerators, number());
      } else {
        return readUnits(element, stage.inputUnits, &stage.outputUnits);
      }
      return true;
    });
    // Of a symmetric filter the first half is written down, with the middle one where their number is odd.
    const bool isOdd = symmetry == QLatin1String("ODD");
    if (isOdd || symmetry == QLatin1String("EVEN")) {
      const std::size_t written = filter.numerators.size();
      for (std::size_t i = isOdd && written > 0 ? written - 1 : written; i > 0; --i)
        filter.numerators.push_back(filter.numerators[i - 1]);
    } else if (symmetry != QLatin1String("NONE")) {
      problem_.note(line, QStringLiteral("FIR: expected the symmetry NONE, EVEN or ODD"));
    }
    return filter;
  }

  ResponseList readList(ResponseStage& stage) {
    ResponseList list;
    xml_.readEach([&](QStringView element) {
      if (element != QLatin1String("ResponseListElement"))
        return readUnits(element, stage.inputUnits, &stage.outputUnits);
      ResponseList::Point point;
      xml_.readEach([&](QStringView part) {
        double* const value = part == QLatin1String("Frequency")   ? &point.frequencyHz
                              : part == QLatin1String("Amplitude") ? &point.amplitude
                              : part == QLatin1String("Phase")     ? &point.phaseDeg
                                                                   : nullptr;
        if (value != nullptr) *value = number();
        return value != nullptr;
      });
      append(list.points, point, kMostFrequencies, "frequencies");
      return true;
    });
    return list;
  }

  Decimation readDecimation() {
    Decimation decimation;
    xml_.readEach([&](QStringView part) {
      double* const value = part == QLatin1String("InputSampleRate") ? &decimation.inputRateHz
                            : part == QLatin1String("Factor")        ? &decimation.factor
                            : part == QLatin1String("Offset")        ? &decimation.offset
                            : part == QLatin1String("Delay")         ? &decimation.delaySeconds
                            : part == QLatin1String("Correction")    ? &decimation.correctionSeconds
                                                                     : nullptr;
      if (value != nullptr) *value = number();
      return value != nullptr;
    });
    return decimation;
  }

  void readGain(ResponseStage& stage) {
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("Value")) {
        stage.gain = number();
      } else if (element == QLatin1String("Frequency")) {
        stage.gainHz = number();
      } else {
        return false;
      }
      return true;
    });
  }

  XmlElements& xml_;
  XmlProblem problem_;
  std::size_t coefficients_ = 0;
};

} // namespace

InstrumentResponse readResponseElement(XmlElements& xml, const QString& name) {
  return ResponseElement(xml).read(name);
}

} // namespace xov
