<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>tessary</name>
    <message>
        <source>Resolutions</source>
        <translation>分辨率</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>显示器</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>未设置</translation>
    </message>
    <message>
        <source>Currently {}.</source>
        <translation>当前为 {}。</translation>
    </message>
    <message>
        <source>General</source>
        <translation>常规</translation>
    </message>
    <message>
        <source>Start Tessary at login</source>
        <translation>登录时启动 Tessary</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Check automatically</source>
        <translation>自动检查</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>立即检查</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>键盘快捷键</translation>
    </message>
    <message>
        <source>Click, then type a shortcut. Escape cancels, Backspace clears.</source>
        <translation>点按，然后键入快捷键。Esc 取消，Backspace 清除。</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>恢复默认设置</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>使用功能键需要调整一项系统设置</translation>
    </message>
</context>
<context>
    <name>updates</name>
    <message>
        <source>en</source>
        <translation>zh_CN</translation>
    </message>
    <message>
        <source>Tessary Update</source>
        <translation>Tessary 更新</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>正在检查更新…</translation>
    </message>
    <message>
        <source>Tessary %1 is available</source>
        <translation>Tessary %1 可用</translation>
    </message>
    <message>
        <source>You have %1. Install downloads the new version (%2), verifies it, and opens it with this computer's package installer. Afterwards quit Tessary and start it again.</source>
        <translation>您使用的是 %1。“安装”会下载新版本（%2），进行验证，然后用此计算机的软件包安装程序打开。完成后请退出 Tessary 并重新启动。</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>新增内容</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>安装(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>稍后(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation>跳过此版本(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>重试(&amp;T)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Downloading %1…</source>
        <translation>正在下载 %1…</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>正在打开 %1…</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>%1 could not be downloaded</source>
        <translation>无法下载 %1</translation>
    </message>
    <message>
        <source>Tessary is up to date</source>
        <translation>Tessary 已是最新版本</translation>
    </message>
    <message>
        <source>You have %1, and there is nothing newer for this computer.</source>
        <translation>您使用的是 %1，没有适用于此计算机的更新版本。</translation>
    </message>
    <message>
        <source>Tessary could not look for updates</source>
        <translation>Tessary 无法检查更新</translation>
    </message>
    <message>
        <source>The list of updates is damaged.</source>
        <translation>更新列表已损坏。</translation>
    </message>
    <message>
        <source>The list of updates names an address that is not secure.</source>
        <translation>更新列表中的地址不安全。</translation>
    </message>
    <message>
        <source>The feed is too large.</source>
        <translation>更新列表过大。</translation>
    </message>
    <message>
        <source>The server took too long to send the feed.</source>
        <translation>服务器发送更新列表的时间过长。</translation>
    </message>
    <message>
        <source>The address “%1” is not secure.</source>
        <translation>地址“%1”不安全。</translation>
    </message>
    <message>
        <source>The server redirects too often.</source>
        <translation>服务器重定向次数过多。</translation>
    </message>
    <message>
        <source>The server redirects to an address that is not secure.</source>
        <translation>服务器重定向到了不安全的地址。</translation>
    </message>
    <message>
        <source>The server answered %1.</source>
        <translation>服务器返回 %1。</translation>
    </message>
    <message>
        <source>The connection ended before everything had come.</source>
        <translation>连接在接收完成之前中断。</translation>
    </message>
    <message>
        <source>The server %1 was not found.</source>
        <translation>找不到服务器 %1。</translation>
    </message>
    <message>
        <source>The server %1 cannot be reached.</source>
        <translation>无法连接服务器 %1。</translation>
    </message>
    <message>
        <source>The server %1 took too long to answer.</source>
        <translation>服务器 %1 的响应时间过长。</translation>
    </message>
    <message>
        <source>There is no secure connection to %1: %2</source>
        <translation>无法与 %1 建立安全连接：%2</translation>
    </message>
    <message>
        <source>The transfer failed: %1</source>
        <translation>传输失败：%1</translation>
    </message>
    <message>
        <source>The package is shorter than announced.</source>
        <translation>软件包小于公布的大小。</translation>
    </message>
    <message>
        <source>The package is larger than announced.</source>
        <translation>软件包大于公布的大小。</translation>
    </message>
    <message>
        <source>The downloaded package is not the one that Tessary's developers have signed.</source>
        <translation>下载的软件包不是 Tessary 开发者签名的软件包。</translation>
    </message>
    <message>
        <source>The version's number makes no sense.</source>
        <translation>版本号无效。</translation>
    </message>
    <message>
        <source>There is too little space for the package in “%1”.</source>
        <translation>“%1”中没有足够的空间存放软件包。</translation>
    </message>
    <message>
        <source>The package could not be written: %1.</source>
        <translation>无法写入软件包：%1。</translation>
    </message>
    <message>
        <source>%1 It was deleted.</source>
        <translation>%1它已被删除。</translation>
    </message>
    <message>
        <source>The folder “%1” cannot be used: %2.</source>
        <translation>无法使用文件夹“%1”：%2。</translation>
    </message>
    <message>
        <source>it is a link or a file</source>
        <translation>它是链接或文件</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>它属于其他用户</translation>
    </message>
    <message>
        <source>it is no absolute path</source>
        <translation>它不是绝对路径</translation>
    </message>
    <message>
        <source>The kind of the package is unknown.</source>
        <translation>软件包的类型未知。</translation>
    </message>
    <message>
        <source>The program “%1”, which finds the program for the package, could not be started.</source>
        <translation>无法启动用于查找软件包处理程序的程序“%1”。</translation>
    </message>
    <message>
        <source>No program is registered for this kind of package.</source>
        <translation>没有为此类软件包注册的程序。</translation>
    </message>
    <message>
        <source>The program for the package could not be started.</source>
        <translation>无法启动处理软件包的程序。</translation>
    </message>
    <message>
        <source>%1 The package lies at “%2”.</source>
        <translation>%1软件包位于“%2”。</translation>
    </message>
    <message>
        <source>Updates are not set up in this copy of Tessary.</source>
        <translation>此 Tessary 副本未设置更新。</translation>
    </message>
    <message>
        <source>It was made without a place to look in, or others can change its files. New versions come from where you got this one.</source>
        <translation>它在构建时没有指定检查位置，或者其他用户可以更改其文件。新版本请从获取此版本的地方获取。</translation>
    </message>
</context>
</TS>
