# Shows that the layer check finds each kind of fault: small trees with one fault each, and one without.
#   cmake -DCHECK=layers.cmake -DFOLDER=<scratch> -P LayersTest.cmake
cmake_minimum_required(VERSION 3.25)

function(tree)
  file(REMOVE_RECURSE ${FOLDER})
  set(rest "${ARGN}")
  while(rest)
    list(POP_FRONT rest path content)
    file(WRITE ${FOLDER}/${path} "${content}\n")
  endwhile()
endfunction()

function(expect name wanted)
  execute_process(COMMAND ${CMAKE_COMMAND} -DROOT=${FOLDER} "-DPUBLIC_HEADERS=platform/View.h;views/xy/Xy.h" -P ${CHECK}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(wanted STREQUAL "nothing")
    if(NOT status EQUAL 0)
      message(SEND_ERROR "${name}: expected no fault, found:\n${output}")
    endif()
  elseif(status EQUAL 0 OR NOT output MATCHES "${wanted}" OR NOT output MATCHES "1 fault\\(s\\)")
    message(SEND_ERROR "${name}: expected one fault '${wanted}', found (status ${status}):\n${output}")
  endif()
endfunction()

set(painter "#include <QPainter>")
set(lib src/XOV_Graphics)
set(view ${lib}/platform/View.h "${painter}")

tree(${view} ${lib}/views/base/Base.h "#include \"XOV_Graphics/platform/View.h\"" ${lib}/views/xy/Xy.h "#include <QString>"
  ${lib}/views/time/Time.h "#include \"XOV_Graphics/views/base/Base.h\"\n#include \"XOV_Graphics/views/xy/Xy.h\"\nclass Time : public Xy {}"
  apps/xov/main.cpp "#include <XOV_Graphics/views/xy/Xy.h>")
expect("a tree in order" nothing)

tree(${view} ${lib}/graphics/Axis.cpp "${painter}")
expect("a painter above the platform" "src/XOV_Graphics/graphics/Axis.cpp: includes <QPainter>")

tree(${view} ${lib}/graphics/Axis.cpp "#  include <QtGui/QPainter>")
expect("a painter by its long name" "src/XOV_Graphics/graphics/Axis.cpp: includes <QtGui/QPainter>")

tree(${view} ${lib}/seismic/Io.h "#include <QtWidgets>")
expect("an umbrella header" "src/XOV_Graphics/seismic/Io.h: includes <QtWidgets>")

tree(${view} apps/xov/commands/Xy.cpp "#include <CLI/CLI.hpp>")
expect("the parser in a command" "apps/xov/commands/Xy.cpp: includes <CLI/CLI.hpp>")

tree(${view} ${lib}/seismic/Io.h "#include <QSslSocket>")
expect("a socket elsewhere" "src/XOV_Graphics/seismic/Io.h: includes <QSslSocket>")

tree(${view} ${lib}/seismic/realtime/seedlink/Client.h "#include <QTcpServer>")
expect("a socket where servers are talked to" nothing)

tree(${view} ${lib}/views/xy/Xy.cpp "#include <QPainterPath>")
expect("a painter path is geometry" nothing)

tree(${view} ${lib}/seismic/Io.h "#include \"XOV_Graphics/platform/View.h\"")
expect("a model that paints" "src/XOV_Graphics/seismic/Io.h: includes \"platform/View.h\", but seismic/")

tree(${lib}/platform/View.h "#include \"XOV_Graphics/graphics/Axis.h\"" ${lib}/graphics/Axis.h "")
expect("an arrow upwards" "src/XOV_Graphics/platform/View.h: includes \"graphics/Axis.h\", but platform/")

tree(${lib}/graphics/Axis.cpp "#include \"Axis.h\"" ${lib}/graphics/Axis.h "")
expect("a path that does not start at the root" "includes \"Axis.h\", which is no file")

tree(${lib}/views/xy/Xy.h "" ${lib}/views/time/Time.h "#include \"XOV_Graphics/views/xy/Xy.h\"\nclass Time : public XyPlus {}")
expect("a view that borrows from another folder" "src/XOV_Graphics/views/time/Time.h: includes \"views/xy/Xy.h\" of another")

tree(${lib}/views/xy/Xy.h "" ${lib}/views/base/Base.h "#include \"XOV_Graphics/views/xy/Xy.h\"\nclass Base : public Xy {}")
expect("the base on top of a view" "src/XOV_Graphics/views/base/Base.h: includes \"views/xy/Xy.h\" of another")

tree(${lib}/platform/Picture.h "" apps/xov/main.cpp "#include \"XOV_Graphics/platform/Picture.h\"")
expect("a program with a private header" "main.cpp: includes \"platform/Picture.h\", which is not a public")

tree(${lib}/platform/Picture.h "" ${lib}/platform/View.h "#include \"XOV_Graphics/platform/Picture.h\"")
expect("a public header with a private one" "src/XOV_Graphics/platform/View.h: is public but includes")

tree(${lib}/seismic/A.h "#include \"XOV_Graphics/seismic/io/B.h\"" ${lib}/seismic/io/B.h "#include \"XOV_Graphics/seismic/A.h\"" ${view})
expect("a circle" "in a circle: seismic/io>seismic, seismic>seismic/io")

string(REPEAT "int x\n" 500 long)
tree(tests/Long.cpp "${long}")
expect("a long file" "tests/Long.cpp: 501 lines")
