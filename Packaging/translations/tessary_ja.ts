<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>tessary</name>
    <message>
        <source>Resolutions</source>
        <translation>解像度</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>ディスプレイ</translation>
    </message>
    <message>
        <source>Not set</source>
        <translation>未設定</translation>
    </message>
    <message>
        <source>Currently {}.</source>
        <translation>現在は {} です。</translation>
    </message>
    <message>
        <source>General</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Start Tessary at login</source>
        <translation>ログイン時に Tessary を起動</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>アップデート</translation>
    </message>
    <message>
        <source>Check automatically</source>
        <translation>自動的に確認</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>今すぐ確認</translation>
    </message>
    <message>
        <source>Keyboard shortcuts</source>
        <translation>キーボードショートカット</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>デフォルトに戻す</translation>
    </message>
    <message>
        <source>Function keys need one System Settings tweak</source>
        <translation>ファンクションキーを使うにはシステム設定の変更が必要です</translation>
    </message>
</context>
</TS>
