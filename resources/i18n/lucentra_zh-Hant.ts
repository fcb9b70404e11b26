<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_TW" sourcelanguage="zh_TW">
<context>
    <name>Lucentra</name>
</context>
</TS>
