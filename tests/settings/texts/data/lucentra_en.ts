<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
    <message>
        <source>兩表皆有</source>
        <translation>in both</translation>
    </message>
    <message>
        <source>只有英文</source>
        <translation>English only</translation>
    </message>
    <message>
        <source>已刪除 %d 筆紀錄</source>
        <translation>Deleted %d entries</translation>
    </message>
</context>
</TS>
