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
        <source>Restore Defaults</source>
        <translation>恢复默认设置</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>使用功能键需要调整一项系统设置</translation>
    </message>
</context>
</TS>
