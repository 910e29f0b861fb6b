// Anti-Grain Geometry: every sample a vertex of a stroked path with round joins.
#include "bench/rivals/Rival.h"

#include <agg_conv_stroke.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_base.h>
#include <agg_renderer_scanline.h>
#include <agg_scanline_u.h>
#include <fstream>

namespace {

using namespace xov::bench;

// The samples as the vertices of one path, a move for each row.
class SampleVertices {
public:
  explicit SampleVertices(const RivalWork& work) : work_(work) {}
  void rewind(unsigned) { row_ = 0, sample_ = 0; }
  unsigned vertex(double* x, double* y) {
    if (sample_ == work_.samplesPerRow) {
      sample_ = 0;
      ++row_;
    }
    if (row_ == work_.rows) return agg::path_cmd_stop;
    *x = work_.x(sample_) * work_.ratio;
    *y = work_.yDown(row_, sample_) * work_.ratio;
    return sample_++ == 0 ? agg::path_cmd_move_to : agg::path_cmd_line_to;
  }

private:
  const RivalWork& work_;
  int row_ = 0;
  std::int64_t sample_ = 0;
};

class AggRival : public Rival {
public:
  void prepare(const RivalWork& work) override {
    work_ = &work;
    pixels_.resize(std::size_t(4) * std::size_t(work.pixelWidth()) * std::size_t(work.pixelHeight()));
  }
  void draw() override {
    const unsigned width = unsigned(work_->pixelWidth()), height = unsigned(work_->pixelHeight());
    agg::rendering_buffer buffer(pixels_.data(), width, height, int(4 * width));
    agg::pixfmt_bgra32 format(buffer);
    agg::renderer_base<agg::pixfmt_bgra32> base(format);
    base.clear(agg::rgba8(255, 255, 255));
    SampleVertices vertices(*work_);
    agg::conv_stroke<SampleVertices> stroke(vertices);
    stroke.width(work_->ratio);
    stroke.line_join(agg::round_join);
    agg::rasterizer_scanline_aa<> rasterizer;
    rasterizer.clip_box(0, 0, width, height);
    rasterizer.add_path(stroke);
    agg::scanline_u8 line;
    agg::render_scanlines_aa_solid(rasterizer, line, base, agg::rgba8(0, 0, 0));
  }
  bool save(const std::string& path) override {
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << work_->pixelWidth() << ' ' << work_->pixelHeight() << "\n255\n";
    for (std::size_t i = 0; i < pixels_.size(); i += 4)
      file.put(char(pixels_[i + 2])).put(char(pixels_[i + 1])).put(char(pixels_[i]));
    return bool(file);
  }

private:
  const RivalWork* work_ = nullptr;
  std::vector<unsigned char> pixels_;
};

} // namespace

int main(int argc, char** argv) {
  AggRival rival;
  return serve(rival, argc, argv);
}
