#pragma once

#include <QMainWindow>
#include <QSplitter>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <algorithm>
#include <cmath>
#include <functional>

/// A section above a drum of the same recording, whose limits are linked: a row of the drum lasts as long as the
/// section. A click into the section shows half as much, around the click, and one into the drum shows twice as much.
class LinkedWindow : public QMainWindow {
public:
  explicit LinkedWindow(const std::shared_ptr<xov::SacSeismogram>& recording) : recording_(recording) {
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(section_ = new xov::MultiSeisView);
    splitter->addWidget(drum_ = new xov::helicorderView);
    setCentralWidget(splitter);
    resize(900, 700);

    closer_.act = [this](QPointF at) { showAbout(float(at.x()), span() / 2); };
    section_->setController(&closer_);
    wider_.act = [this](QPointF) { showAbout((section_->xmin() + section_->xmax()) / 2, span() * 2); };
    drum_->setController(&wider_);
    pieces_->push_back(recording_);
    drum_->setWvfrmArray(pieces_); // views refer to arrays: the host keeps them
    section_->setWvfrmsArray(records_);
    showAbout((recording_->b() + recording_->e()) / 2, recording_->e() - recording_->b());
  }

  xov::MultiSeisView* section() const { return section_; }
  xov::helicorderView* drum() const { return drum_; }

  /// Shows `seconds` of the recording about `middle`, as far as there are so many.
  void showAbout(float middle, float seconds) {
    const int longest = recording_->npts() - 1;
    const int wanted = std::min(longest, std::max(kFewestSamples, int(std::lround(seconds / recording_->delta()))));
    const auto start = int(std::lround((middle - recording_->b()) / recording_->delta())) - wanted / 2;
    const int first = std::clamp(start, 0, longest - wanted);
    const std::span<const float> samples = std::as_const(*recording_).samples();
    xov::SacHeader header;
    header.delta = recording_->delta();
    header.b = recording_->b() + float(first) * recording_->delta();
    const auto stretch = samples.subspan(std::size_t(first), std::size_t(wanted) + 1);
    records_->assign(
        1, std::make_shared<xov::SacSeismogram>(header, std::vector<float>(stretch.begin(), stretch.end())));
    section_->computePlotLimits();
    section_->update();
    linkDrum();
  }

private:
  static constexpr int kFewestSamples = 20;

  struct Clicks : xov::PlotController {
    std::function<void(QPointF)> act;
    void handleClickedMousePosition(QPointF position) override { act(position); }
    void handleTrackedMousePosition(QPointF) override {}
  };

  float span() const { return section_->xmax() - section_->xmin(); }
  void linkDrum() {
    drum_->setRowDuration(span());
    drum_->setNRows(std::int32_t(std::ceil((recording_->e() - recording_->b()) / span())));
    drum_->update();
  }

  std::shared_ptr<xov::SacSeismogram> recording_;
  std::shared_ptr<xov::SeismogramArray> pieces_ = std::make_shared<xov::SeismogramArray>();
  std::shared_ptr<xov::SeismogramArray> records_ = std::make_shared<xov::SeismogramArray>();
  xov::MultiSeisView* section_ = nullptr;
  xov::helicorderView* drum_ = nullptr;
  Clicks closer_;
  Clicks wider_;
};
