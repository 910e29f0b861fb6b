#pragma once

#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/response/InstrumentResponse.h"

namespace xov {

/// Reads the element <Response> of StationXML, where the reader is, to its end. What cannot be understood is in the
/// response's `problem`, with the name of the file and the line. A response has at most 100 stages and 10 000
/// coefficients, poles and zeros as they are written, and a list at most 100 000 frequencies.
InstrumentResponse readResponseElement(XmlElements& xml, const QString& name);

} // namespace xov
