#pragma once

namespace tessary {

/// The toolkit looks for its plug-ins and its configuration beside the program, too, where others
/// may have put theirs when the program is a copy in a folder such as /tmp. Has the application
/// object that is constructed next leave out a folder that others may write to. (The
/// embedded :/qt/etc/qt.conf keeps the toolkit from reading a qt.conf there.)
void leaveOutPluginsOfOthers();

} // namespace tessary
