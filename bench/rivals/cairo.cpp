// cairo: every sample a point of one path, stroked with round joins.
#include "bench/rivals/Rival.h"

#include <cairo-pdf.h>
#include <cairo.h>

namespace {

using namespace xov::bench;

class CairoRival : public Rival {
public:
  ~CairoRival() override { cairo_surface_destroy(surface_); }

  void prepare(const RivalWork& work) override {
    work_ = &work;
    surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, work.pixelWidth(), work.pixelHeight());
  }
  void draw() override {
    cairo_t* context = cairo_create(surface_);
    cairo_scale(context, work_->ratio, work_->ratio);
    stroke(context);
    cairo_destroy(context);
    cairo_surface_flush(surface_);
  }
  bool save(const std::string& path) override {
    return cairo_surface_write_to_png(surface_, path.c_str()) == CAIRO_STATUS_SUCCESS;
  }
  bool writePdf(const std::string& path) override {
    cairo_surface_t* page = cairo_pdf_surface_create(path.c_str(), work_->width, work_->height);
    cairo_t* context = cairo_create(page);
    stroke(context);
    cairo_destroy(context);
    cairo_surface_finish(page);
    const bool done = cairo_surface_status(page) == CAIRO_STATUS_SUCCESS;
    cairo_surface_destroy(page);
    return done;
  }

private:
  void stroke(cairo_t* context) const {
    cairo_set_source_rgb(context, 1, 1, 1);
    cairo_paint(context);
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_set_line_width(context, 1);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    for (int row = 0; row < work_->rows; ++row) {
      cairo_move_to(context, work_->x(0), work_->yDown(row, 0));
      for (std::int64_t i = 1; i < work_->samplesPerRow; ++i)
        cairo_line_to(context, work_->x(i), work_->yDown(row, i));
    }
    cairo_stroke(context);
  }

  const RivalWork* work_ = nullptr;
  cairo_surface_t* surface_ = nullptr;
};

} // namespace

int main(int argc, char** argv) {
  CairoRival rival;
  return serve(rival, argc, argv);
}
