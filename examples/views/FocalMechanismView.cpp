// Beach balls: a thrust and a strike-slip earthquake from strike, dip and rake.
//   FocalMechanismView           opens a window
//   FocalMechanismView PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/views/seismic/FocalMechanismView.h>

/// The mechanism of one nodal plane, in degrees.
xov::FocalMechanism mechanism(float strike, float dip, float rake) {
  xov::FocalMechanism made;
  made.planes[0] = {strike, dip, rake};
  return made;
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  xov::FocalMechanismView view(QRectF(0, 0, 560, 320));
  view.setMechanisms(
      {{mechanism(203, 10, 88), "Thrust: 203, 10, 88"}, {mechanism(20, 85, 170), "Strike slip: 20, 85, 170"}});
  view.setCompressionalColor(QColor(0xc0, 0x20, 0x20));
  view.setShowPrincipalAxes(true);
  view.setTitle("Lower half of the focal sphere");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
