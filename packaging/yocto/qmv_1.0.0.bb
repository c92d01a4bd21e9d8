# This recipe is not built by the project's own tests. It takes the release from qmv/ beside it, made by
#
#   git archive --prefix=qmv-1.0.0/ -o qmv-1.0.0.tar.gz HEAD

SUMMARY = "Database access layer of a server management controller"
SECTION = "libs"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=d55de875ff27a2c22ef62916f8f71b14"

SRC_URI = "file://${BP}.tar.gz"

DEPENDS = "cli11 fmt nlohmann-json sqlite3"

inherit meson pkgconfig

EXTRA_OEMESON = "-Dtests=false -Dman=false"

# The command is for people: an image can do without it.
PACKAGES =+ "qmvctl"
SUMMARY:qmvctl = "Command for the databases of a server management controller"
FILES:qmvctl = "${bindir}/qmvctl ${datadir}/bash-completion"
