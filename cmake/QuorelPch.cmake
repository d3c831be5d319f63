# Reading Qt's headers takes longer than compiling most of our files, so g++ reads them once for all folders and once for
# all tests (which allow casts from text that the folders forbid). The headers say nothing about who may use what: each
# file still includes what it needs, and clang, which goes without, holds it to that.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    option(QUOREL_PCH "Precompiled headers" ON)
endif()

set(quorel_pch_headers
    <algorithm> <array> <chrono> <cmath> <cstdlib> <functional> <map> <memory> <optional> <span> <utility> <vector>
    <QApplication> <QByteArray> <QCheckBox> <QComboBox> <QDateTime> <QDir> <QEvent> <QFile> <QFileInfo> <QHash>
    <QKeyEvent> <QLabel> <QLineEdit> <QMouseEvent> <QObject> <QPainter> <QPixmap> <QPointer> <QProcess> <QPushButton>
    <QString> <QStringList> <QTemporaryDir> <QTimer> <QVariant> <QWidget>)

function(quorel_pch_target name)
    add_library(${name} OBJECT ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/pch/pch.cpp)
    target_link_libraries(${name} PRIVATE Qt6::Widgets quorel_warnings)
    target_compile_definitions(${name} PRIVATE ${ARGN})
    target_compile_options(${name} PRIVATE -fpch-preprocess) # lets ccache see through it
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_precompile_headers(${name} PRIVATE ${quorel_pch_headers})
endfunction()

if(QUOREL_PCH)
    quorel_pch_target(quorel_pch_src QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
    quorel_pch_target(quorel_pch_tests)
endif()

# quorel_use_pch(target of): reads the headers of quorel_pch_<of>, where they are precompiled. A Windows program without
# a console goes without: Qt gives it a definition of its own for its entry, and g++ then refuses what others compiled.
function(quorel_use_pch target of)
    get_target_property(sem_console ${target} WIN32_EXECUTABLE)
    if(QUOREL_PCH AND NOT (WIN32 AND sem_console))
        target_compile_options(${target} PRIVATE -fpch-preprocess)
        target_precompile_headers(${target} REUSE_FROM quorel_pch_${of})
    endif()
endfunction()
