#pragma once

#include "tests/support/FakeRecord.h"

#include <functional>

namespace xov::testing {

/// A record that calls its host at each question, before it answers.
class HookedRecord : public FakeRecord {
public:
  using FakeRecord::FakeRecord;

  std::function<void()> asked;
  bool knowsNoHeader = false;

  const float* GetSacSeis() const override { return tell(), FakeRecord::GetSacSeis(); }
  int npts() const override { return tell(), FakeRecord::npts(); }
  float delta() const override { return tell(), FakeRecord::delta(); }
  float b() const override { return tell(), FakeRecord::b(); }
  float e() const override { return tell(), FakeRecord::e(); }
  float a() const override { return tell(), FakeRecord::a(); }
  float smin() const override { return tell(), FakeRecord::smin(); }
  float smax() const override { return tell(), FakeRecord::smax(); }
  float absMax() const override { return tell(), FakeRecord::absMax(); }
  void ComputeExtrema() override { tell(), FakeRecord::ComputeExtrema(); }
  QString kstnm() const override { return tell(), FakeRecord::kstnm(); }
  QString knetwk() const override { return tell(), FakeRecord::knetwk(); }
  QString kcmpnm() const override { return tell(), FakeRecord::kcmpnm(); }
  float gcarc() const override { return tell(), FakeRecord::gcarc(); }
  float azimuth() const override { return tell(), FakeRecord::azimuth(); }
  float timePickKey(int key) const override { return tell(), FakeRecord::timePickKey(key); }
  QString pickLabelWithKey(int key) const override { return tell(), FakeRecord::pickLabelWithKey(key); }
  std::shared_ptr<SeisTime> mySeisReferenceTime() const override { return tell(), FakeRecord::mySeisReferenceTime(); }
  const SacHeader* GetSacHeader() const override {
    tell();
    return knowsNoHeader ? nullptr : FakeRecord::GetSacHeader();
  }
  QString labelString() const override { return tell(), FakeRecord::labelString(); }
  QString path() const override { return tell(), FakeRecord::path(); }

private:
  void tell() const {
    if (asked) asked();
  }
};

} // namespace xov::testing
