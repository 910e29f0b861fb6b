#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace xov::desk {

/// What a pane shows, as a command of xov would draw it: a value that is compared, remembered and taken back.
struct PlotRequest {
  QString kind;                      ///< the command, as "section"
  QStringList options;               ///< its words, such as --sort distance, but for those below
  QList<QStringList> steps;          ///< what is done to records, a list of words each: --filter bandpass 1 5; behind
                                     ///< a "#" what is switched off
  QMap<QString, QString> properties; ///< of the view, as texts by name: --set
  QStringList files;                 ///< paths; empty where options name the files

  bool isRaw = false; ///< the steps are left out for now

  bool operator==(const PlotRequest&) const = default;

  /// The words of the command line behind the program's name.
  QStringList words() const;

  /// The properties as "name=value", in the order in which they are to be written.
  QStringList assignments() const;

  /// The same request with the properties that the view has of itself.
  PlotRequest withoutProperties() const;

  /// The same as a line for a shell, with the program's name in front and the size of the plot in points.
  QString commandLine(const QSize& size) const;

  QJsonObject toJson() const;
  /// What is missing or of another type is left empty.
  static PlotRequest fromJson(const QJsonObject& object);
};

/// A short name of files: that of the one, or of the first of several and how many there are besides.
QString filesText(const QStringList& files);

/// A word that a POSIX shell takes for this text: in quotes where it has to be.
QString shellWord(const QString& text);

} // namespace xov::desk
