<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>QWorkbench</name>
    <message>
        <source>lang_workbench_title</source>
        <translation>Feature workbench</translation>
    </message>
    <message>
        <source>lang_workbench_devices</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>lang_workbench_device</source>
        <translation>Device</translation>
    </message>
    <message>
        <source>lang_workbench_state</source>
        <translation>State</translation>
    </message>
    <message>
        <source>lang_workbench_open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>lang_workbench_close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>lang_workbench_start</source>
        <translation>Start grabbing</translation>
    </message>
    <message>
        <source>lang_workbench_stop</source>
        <translation>Stop grabbing</translation>
    </message>
    <message>
        <source>lang_workbench_language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>lang_workbench_messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>lang_workbench_level_info</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>lang_workbench_level_warning</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>lang_workbench_level_error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>lang_workbench_state_available</source>
        <translation>Available</translation>
    </message>
    <message>
        <source>lang_workbench_state_opening</source>
        <translation>Opening</translation>
    </message>
    <message>
        <source>lang_workbench_state_open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>lang_workbench_state_grabbing</source>
        <translation>Grabbing</translation>
    </message>
    <message>
        <source>lang_workbench_state_lost</source>
        <translation>Lost</translation>
    </message>
    <message>
        <source>lang_workbench_opened</source>
        <translation>The device is open.</translation>
    </message>
    <message>
        <source>lang_workbench_closed</source>
        <translation>The device was closed.</translation>
    </message>
    <message>
        <source>lang_workbench_openfailed</source>
        <translation>The device could not be opened: %1</translation>
    </message>
    <message>
        <source>lang_workbench_readonly</source>
        <translation>Another host controls the device: it was opened read only.</translation>
    </message>
    <message>
        <source>lang_workbench_noroot</source>
        <translation>The description has no category &quot;Root&quot;: the tree is empty.</translation>
    </message>
    <message>
        <source>lang_workbench_lost</source>
        <translation>The connection to the device was lost.</translation>
    </message>
    <message>
        <source>lang_workbench_startfailed</source>
        <translation>Grabbing could not be started: %1</translation>
    </message>
    <message>
        <source>lang_workbench_stopfailed</source>
        <translation>Grabbing could not be stopped: %1</translation>
    </message>
    <message>
        <source>lang_workbench_timeout</source>
        <translation>No answer from %1: the values were not read within %2 s.</translation>
    </message>
    <message>
        <source>lang_workbench_unknownfeature</source>
        <translation>There is no feature '%1'.</translation>
    </message>
    <message>
        <source>lang_workbench_notread</source>
        <translation>The feature '%1' has no value that was read from the device.</translation>
    </message>
    <message>
        <source>lang_workbench_writefailed</source>
        <translation>'%1' could not be written.</translation>
    </message>
</context>
</TS>
