#pragma once

namespace tessary {

/// The toolkit looks for its plug-ins and its configuration beside the program, too, where others
/// may have put theirs when the program is a copy in a folder such as /tmp. Has the application
/// object that is constructed next leave out a folder that others may write to. (That the toolkit
/// does not read a qt.conf there sees the one that is embedded as :/qt/etc/qt.conf.)
void leaveOutPluginsOfOthers();

} // namespace tessary
