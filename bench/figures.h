// The figures that have goals.
#pragma once

#include <vector>

#include "bench/figure.h"

namespace sontaro::bench {

/// Large packets through a connected link, against bare send and recv calls.
[[nodiscard]] Figure LinkThroughput();

/// A reply put together from chunks, against memcpy of the same chunks.
[[nodiscard]] Figure ReassemblyThroughput();

/// A large document of custom settings and a full control protocol, each read and written, against
/// jsoncpp's own reader and writer.
[[nodiscard]] std::vector<Figure> Documents();

/// A timeline as large as players take: read and written against jsoncpp, changed against sorting
/// as many records.
[[nodiscard]] std::vector<Figure> Timelines();

/// A video wall of 16 screens: laid out and written against jsoncpp writing the same tree, and a
/// frame of its picture, while a seam is dragged, against one of 4 screens.
[[nodiscard]] std::vector<Figure> ScreenSplits();

/// A message from a link thread to the user-interface thread and back, against a bare round trip
/// between two threads. Needs the toolkit.
[[nodiscard]] Figure MessageRoundTrip();

/// Time until the main window is on the screen, and memory once it is idle, against a minimal
/// dialog program. Needs a display.
[[nodiscard]] std::vector<Figure> StartUp();

/// The largest dialog's rows in a settings grid, and the five grids of a control protocol, against
/// bare property grids; a player's 10,000 settings, by the row; a letter of a filter against
/// building the rows. Needs the toolkit.
[[nodiscard]] std::vector<Figure> SettingsGrids();

/// Videos that go to a simulated player in a process of its own: what a chunk takes more than in a
/// bare loop that reads ahead, how late a timer of the window is meanwhile, how much faster reading
/// ahead is where disk and network are slow, and the memory that it takes. Needs the toolkit.
[[nodiscard]] std::vector<Figure> BatchSends();

/// sontaro-cli: its help against a program that prints the same text, and the backup of a hundred
/// players against a bare loop.
[[nodiscard]] std::vector<Figure> CommandLine();

/// A table of 65,000 rows: what opening it takes beyond one that fills the window, and a row that
/// comes beyond the redraw; against sorting as many records. Needs the toolkit.
[[nodiscard]] std::vector<Figure> Tables();

}  // namespace sontaro::bench
