<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>QWorkbench</name>
    <message>
        <source>lang_workbench_title</source>
        <translation>Feature Workbench</translation>
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
        <translation>Start Grabbing</translation>
    </message>
    <message>
        <source>lang_workbench_stop</source>
        <translation>Stop Grabbing</translation>
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
    <message>
        <source>lang_workbench_discover</source>
        <translation>Discover</translation>
    </message>
    <message>
        <source>lang_workbench_discover_tip</source>
        <translation>Looks for devices on the network and on the USB</translation>
    </message>
    <message>
        <source>lang_workbench_searching</source>
        <translation>Searching ...</translation>
    </message>
    <message>
        <source>lang_workbench_found</source>
        <translation>Search ended: %1 devices answered, %2 of them are new in the list.</translation>
    </message>
    <message>
        <source>lang_workbench_group_simulated</source>
        <translation>Simulated</translation>
    </message>
    <message>
        <source>lang_workbench_group_gige</source>
        <translation>GigE Vision</translation>
    </message>
    <message>
        <source>lang_workbench_group_usb3</source>
        <translation>USB3 Vision</translation>
    </message>
    <message>
        <source>lang_workbench_state_starting</source>
        <translation>Starting</translation>
    </message>
    <message>
        <source>lang_workbench_state_stopping</source>
        <translation>Stopping</translation>
    </message>
    <message>
        <source>lang_workbench_state_readonly</source>
        <translation>Read only</translation>
    </message>
    <message>
        <source>lang_workbench_state_notresponding</source>
        <translation>Not responding</translation>
    </message>
    <message>
        <source>lang_workbench_notresponding</source>
        <translation>The device does not respond. The program keeps asking.</translation>
    </message>
    <message>
        <source>lang_workbench_answers</source>
        <translation>The device responds again. All values are read again.</translation>
    </message>
    <message>
        <source>lang_workbench_returned</source>
        <translation>The device is back. All values are read again.</translation>
    </message>
    <message>
        <source>lang_workbench_restarted</source>
        <translation>The device was restarted or reset. It is shown from the start.</translation>
    </message>
    <message>
        <source>lang_workbench_notreturned</source>
        <translation>The device did not come back and was closed.</translation>
    </message>
    <message>
        <source>lang_workbench_controllost</source>
        <translation>Another host took control of the device.</translation>
    </message>
    <message>
        <source>lang_workbench_banner_notresponding</source>
        <translation>The device does not respond</translation>
    </message>
    <message>
        <source>lang_workbench_banner_notresponding_text</source>
        <translation>No answer since %1. The program keeps asking; what is shown was read before.</translation>
    </message>
    <message>
        <source>lang_workbench_banner_lost</source>
        <translation>The connection to the device was lost</translation>
    </message>
    <message>
        <source>lang_workbench_banner_lost_text</source>
        <translation>Lost since %1. The program waits %2 s for its return, then reads all values again; what is shown was read before.</translation>
    </message>
    <message>
        <source>lang_workbench_banner_gone</source>
        <translation>The device did not come back</translation>
    </message>
    <message>
        <source>lang_workbench_banner_gone_text</source>
        <translation>Lost since %1, and closed meanwhile. Open it again when it is back.</translation>
    </message>
    <message>
        <source>lang_workbench_banner_readonly</source>
        <translation>Another host controls the device</translation>
    </message>
    <message>
        <source>lang_workbench_banner_readonly_text</source>
        <translation>Read only since %1: values can be read, not written. When the other host has let go of the device, close it and open it again.</translation>
    </message>
    <message>
        <source>lang_workbench_told_roi</source>
        <translation>The region in which codes are looked for was changed.</translation>
    </message>
    <message>
        <source>lang_workbench_told_role</source>
        <translation>The role of the station was changed.</translation>
    </message>
    <message>
        <source>lang_workbench_told_mainsub</source>
        <translation>Main and sub stations have changed.</translation>
    </message>
    <message>
        <source>lang_workbench_told_polling</source>
        <translation>A polling parameter was changed.</translation>
    </message>
    <message>
        <source>lang_workbench_told_smarttune</source>
        <translation>Smart tune was started.</translation>
    </message>
    <message>
        <source>lang_workbench_told_selfadapt</source>
        <translation>The adaptation of the parameters was started.</translation>
    </message>
    <message>
        <source>lang_workbench_told_loaded</source>
        <translation>Parameters were loaded into the device. All values are read again.</translation>
    </message>
    <message>
        <source>lang_workbench_told_target</source>
        <translation>A polling or protocol setting was changed.</translation>
    </message>
    <message>
        <source>lang_workbench_told_test_open</source>
        <translation>The device sends the test pattern instead of its image.</translation>
    </message>
    <message>
        <source>lang_workbench_told_test_close</source>
        <translation>The device sends its own image, not the test pattern.</translation>
    </message>
    <message>
        <source>lang_workbench_told_ftp_open</source>
        <translation>The device uploads raw test images over FTP.</translation>
    </message>
    <message>
        <source>lang_workbench_told_ftp_close</source>
        <translation>The device no longer uploads raw test images over FTP.</translation>
    </message>
    <message>
        <source>lang_workbench_image_test_open</source>
        <translation>Image view: test pattern on.</translation>
    </message>
    <message>
        <source>lang_workbench_image_test_close</source>
        <translation>Image view: test pattern off.</translation>
    </message>
    <message>
        <source>lang_workbench_image_ftp_open</source>
        <translation>Image view: upload of raw test images on.</translation>
    </message>
    <message>
        <source>lang_workbench_image_ftp_close</source>
        <translation>Image view: upload of raw test images off.</translation>
    </message>
    <message>
        <source>lang_workbench_modified_tip</source>
        <translation>Changed since its settings were saved last</translation>
    </message>
    <message>
        <source>lang_workbench_askclose_title</source>
        <translation>Unsaved Changes</translation>
    </message>
    <message>
        <source>lang_workbench_askclose</source>
        <translation>The settings of %1 were changed and not saved in the device. Close it all the same?</translation>
    </message>
    <message>
        <source>lang_workbench_notaswitch</source>
        <translation>'%1' is neither true nor false.</translation>
    </message>
    <message>
        <source>lang_workbench_noentry</source>
        <translation>There is no entry '%1'. Entries: %2.</translation>
    </message>
    <message>
        <source>lang_workbench_notext</source>
        <translation>It holds no value that could be given as text.</translation>
    </message>
    <message>
        <source>lang_workbench_nocommand</source>
        <translation>'%1' is no command.</translation>
    </message>
    <message>
        <source>lang_workbench_iscommand</source>
        <translation>'%1' is a command: --run runs it.</translation>
    </message>
    <message>
        <source>lang_workbench_notwritable</source>
        <translation>'%1' cannot be changed in the present state of the device.</translation>
    </message>
    <message>
        <source>lang_workbench_refusedtext</source>
        <translation>'%1' was not written. %2</translation>
    </message>
    <message>
        <source>lang_workbench_notwritten</source>
        <translation>'%1' was not written. %2</translation>
    </message>
    <message>
        <source>lang_workbench_notrun</source>
        <translation>'%1' was not run. %2</translation>
    </message>
    <message>
        <source>lang_workbench_notcopied</source>
        <translation>'%1' was not copied: %2</translation>
    </message>
    <message>
        <source>lang_workbench_nofiles</source>
        <translation>The device has no files.</translation>
    </message>
    <message>
        <source>lang_workbench_kept</source>
        <translation>'%1' was not written: it still holds %2.</translation>
    </message>
    <message>
        <source>lang_workbench_declined</source>
        <translation>Answered with no, since --yes was not given: %1</translation>
    </message>
    <message>
        <source>lang_workbench_on</source>
        <translation>On</translation>
    </message>
    <message>
        <source>lang_workbench_off</source>
        <translation>Off</translation>
    </message>
    <message>
        <source>lang_workbench_changed</source>
        <translation>Changed</translation>
    </message>
    <message>
        <source>lang_workbench_setunread</source>
        <translation>Not read yet. Select this set with the feature &quot;PollingParam&quot; to read it.</translation>
    </message>
    <message>
        <source>lang_workbench_codetype</source>
        <translation>Code Count</translation>
    </message>
    <message>
        <source>lang_workbench_mostcodes</source>
        <translation>At Most</translation>
    </message>
    <message>
        <source>lang_workbench_pollingtable</source>
        <translation>Polling Parameters</translation>
    </message>
    <message>
        <source>lang_workbench_codetypes</source>
        <translation>Code Counts</translation>
    </message>
    <message>
        <source>lang_workbench_allfeatures</source>
        <translation>All Features</translation>
    </message>
    <message>
        <source>lang_workbench_guidedpages</source>
        <translation>Guided Pages</translation>
    </message>
    <message>
        <source>lang_workbench_basicpages</source>
        <translation>Basic Pages Only</translation>
    </message>
    <message>
        <source>lang_workbench_notopen</source>
        <translation>The features of the selected device are shown here when it is open.</translation>
    </message>
    <message>
        <source>lang_workbench_nopages</source>
        <translation>There are no guided pages for this device.</translation>
    </message>
    <message>
        <source>lang_workbench_adjustfocus</source>
        <translation>Adjust Focus</translation>
    </message>
    <message>
        <source>lang_workbench_autotriggertime</source>
        <translation>Auto Trigger Time(ms)</translation>
    </message>
    <message>
        <source>lang_workbench_autotrigger</source>
        <translation>Enable Auto Trigger</translation>
    </message>
    <message>
        <source>lang_workbench_tags</source>
        <translation>Tags</translation>
    </message>
    <message>
        <source>lang_workbench_ascii</source>
        <translation>ASCII Characters</translation>
    </message>
    <message>
        <source>lang_workbench_character</source>
        <translation>Character</translation>
    </message>
    <message>
        <source>lang_workbench_decimal</source>
        <translation>Decimal</translation>
    </message>
    <message>
        <source>lang_workbench_hexadecimal</source>
        <translation>Hexadecimal</translation>
    </message>
    <message>
        <source>lang_workbench_ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>lang_workbench_cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>lang_workbench_filetrouble</source>
        <translation>'%1': %2</translation>
    </message>
    <message>
        <source>lang_workbench_otherversion</source>
        <translation>'%1' was written by version %2 of the software. Take it all the same?</translation>
    </message>
    <message>
        <source>lang_workbench_notapplied</source>
        <translation>The differences were not applied, since --yes was not given.</translation>
    </message>
    <message>
        <source>lang_workbench_nottaken</source>
        <translation>'%1' was not taken: the file says %2, the device %3.</translation>
    </message>
    <message>
        <source>lang_workbench_exportfailed</source>
        <translation>The export failed. %1</translation>
    </message>
    <message>
        <source>lang_workbench_importfailed</source>
        <translation>The import failed. %1</translation>
    </message>
    <message>
        <source>lang_workbench_comparefailed</source>
        <translation>The comparison failed. %1</translation>
    </message>
    <message>
        <source>lang_workbench_filejobstuck</source>
        <translation>There was no progress for %1 s; the job was given up.</translation>
    </message>
    <message>
        <source>lang_workbench_filejobunsaid</source>
        <translation>The feature tree ended the job without an answer.</translation>
    </message>
</context>
</TS>
