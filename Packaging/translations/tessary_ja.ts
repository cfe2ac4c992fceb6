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
        <source>Click, then type a shortcut. Escape cancels, Backspace clears.</source>
        <translation>クリックしてからショートカットを押します。Esc で取り消し、Backspace で消去します。</translation>
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
<context>
    <name>updates</name>
    <message>
        <source>en</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>Tessary Update</source>
        <translation>Tessary のアップデート</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>アップデートを確認しています…</translation>
    </message>
    <message>
        <source>Tessary %1 is available</source>
        <translation>Tessary %1 が利用できます</translation>
    </message>
    <message>
        <source>You have %1. Install downloads the new version (%2), verifies it, and opens it with this computer's package installer. Afterwards quit Tessary and start it again.</source>
        <translation>現在のバージョンは %1 です。「インストール」を選ぶと、新しいバージョン (%2) をダウンロードして検証し、このコンピューターのパッケージインストーラーで開きます。その後、Tessary を終了してもう一度起動してください。</translation>
    </message>
    <message>
        <source>What is new</source>
        <translation>新機能</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>インストール(&amp;I)</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>後で(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Skip This Version</source>
        <translation>このバージョンをスキップ(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>キャンセル(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>再試行(&amp;T)</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Downloading %1…</source>
        <translation>%1 をダウンロードしています…</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>%1 を開いています…</translation>
    </message>
    <message>
        <source>%1 could not be opened</source>
        <translation>%1 を開けませんでした</translation>
    </message>
    <message>
        <source>%1 could not be downloaded</source>
        <translation>%1 をダウンロードできませんでした</translation>
    </message>
    <message>
        <source>Tessary is up to date</source>
        <translation>Tessary は最新です</translation>
    </message>
    <message>
        <source>You have %1, and there is nothing newer for this computer.</source>
        <translation>現在のバージョンは %1 です。このコンピューター用のより新しいバージョンはありません。</translation>
    </message>
    <message>
        <source>Tessary could not look for updates</source>
        <translation>Tessary はアップデートを確認できませんでした</translation>
    </message>
    <message>
        <source>The list of updates is damaged.</source>
        <translation>アップデートの一覧が壊れています。</translation>
    </message>
    <message>
        <source>The list of updates names an address that is not secure.</source>
        <translation>アップデートの一覧に安全でないアドレスが含まれています。</translation>
    </message>
    <message>
        <source>The feed is too large.</source>
        <translation>アップデートの一覧が大きすぎます。</translation>
    </message>
    <message>
        <source>The server took too long to send the feed.</source>
        <translation>サーバーがアップデートの一覧を送るのに時間がかかりすぎました。</translation>
    </message>
    <message>
        <source>The address “%1” is not secure.</source>
        <translation>アドレス「%1」は安全ではありません。</translation>
    </message>
    <message>
        <source>The server redirects too often.</source>
        <translation>サーバーのリダイレクトが多すぎます。</translation>
    </message>
    <message>
        <source>The server redirects to an address that is not secure.</source>
        <translation>サーバーが安全でないアドレスにリダイレクトしています。</translation>
    </message>
    <message>
        <source>The server answered %1.</source>
        <translation>サーバーの応答は %1 でした。</translation>
    </message>
    <message>
        <source>The connection ended before everything had come.</source>
        <translation>すべてを受信する前に接続が終了しました。</translation>
    </message>
    <message>
        <source>The server %1 was not found.</source>
        <translation>サーバー %1 が見つかりませんでした。</translation>
    </message>
    <message>
        <source>The server %1 cannot be reached.</source>
        <translation>サーバー %1 に接続できません。</translation>
    </message>
    <message>
        <source>The server %1 took too long to answer.</source>
        <translation>サーバー %1 の応答に時間がかかりすぎました。</translation>
    </message>
    <message>
        <source>There is no secure connection to %1: %2</source>
        <translation>%1 への安全な接続を確立できません: %2</translation>
    </message>
    <message>
        <source>The transfer failed: %1</source>
        <translation>転送に失敗しました: %1</translation>
    </message>
    <message>
        <source>The package is shorter than announced.</source>
        <translation>パッケージが通知されたサイズより小さくなっています。</translation>
    </message>
    <message>
        <source>The package is larger than announced.</source>
        <translation>パッケージが通知されたサイズより大きくなっています。</translation>
    </message>
    <message>
        <source>The downloaded package is not the one that Tessary's developers have signed.</source>
        <translation>ダウンロードしたパッケージは、Tessary の開発者が署名したものではありません。</translation>
    </message>
    <message>
        <source>The version's number makes no sense.</source>
        <translation>バージョン番号が正しくありません。</translation>
    </message>
    <message>
        <source>There is too little space for the package in “%1”.</source>
        <translation>「%1」にパッケージのための空き容量が足りません。</translation>
    </message>
    <message>
        <source>The package could not be written: %1.</source>
        <translation>パッケージを書き込めませんでした: %1。</translation>
    </message>
    <message>
        <source>%1 It was deleted.</source>
        <translation>%1削除しました。</translation>
    </message>
    <message>
        <source>The folder “%1” cannot be used: %2.</source>
        <translation>フォルダー「%1」を使用できません: %2。</translation>
    </message>
    <message>
        <source>it is a link or a file</source>
        <translation>リンクまたはファイルです</translation>
    </message>
    <message>
        <source>it belongs to another user</source>
        <translation>ほかのユーザーが所有しています</translation>
    </message>
    <message>
        <source>it is no absolute path</source>
        <translation>絶対パスではありません</translation>
    </message>
    <message>
        <source>The kind of the package is unknown.</source>
        <translation>パッケージの種類が不明です。</translation>
    </message>
    <message>
        <source>The program “%1”, which finds the program for the package, could not be started.</source>
        <translation>パッケージ用のプログラムを探すプログラム「%1」を起動できませんでした。</translation>
    </message>
    <message>
        <source>No program is registered for this kind of package.</source>
        <translation>この種類のパッケージ用のプログラムが登録されていません。</translation>
    </message>
    <message>
        <source>The program for the package could not be started.</source>
        <translation>パッケージ用のプログラムを起動できませんでした。</translation>
    </message>
    <message>
        <source>%1 The package lies at “%2”.</source>
        <translation>%1パッケージは「%2」にあります。</translation>
    </message>
    <message>
        <source>Updates are not set up in this copy of Tessary.</source>
        <translation>この Tessary ではアップデートが設定されていません。</translation>
    </message>
    <message>
        <source>It was made without a place to look in, or others can change its files. New versions come from where you got this one.</source>
        <translation>確認先なしで作成されたか、ほかのユーザーがファイルを変更できる状態です。新しいバージョンはこのバージョンの入手元で入手できます。</translation>
    </message>
</context>
</TS>
