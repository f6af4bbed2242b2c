<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>ControlKit</name>
    <message>
        <source>lang_controlkit_cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>lang_controlkit_close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>lang_controlkit_date</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>lang_controlkit_maximise</source>
        <translation>Maximize</translation>
    </message>
    <message>
        <source>lang_controlkit_minimise</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>lang_controlkit_no</source>
        <translation>No</translation>
    </message>
    <message>
        <source>lang_controlkit_ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>lang_controlkit_openfolder</source>
        <translation>Open Folder</translation>
    </message>
    <message>
        <source>lang_controlkit_prompt</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>lang_controlkit_search</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>lang_controlkit_time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>lang_controlkit_yes</source>
        <translation>Yes</translation>
    </message>
</context>
<context>
    <name>QCustomReverseHintWidget</name>
    <message>
        <source>lang_qcustomreversehintwidget_codetrigenable</source>
        <translation>Trigger by Code</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_codetrigenabletooltip</source>
        <translation>While this is on, a code that was read starts and stops the trigger.</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_hdrenable</source>
        <translation>HDR</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_hdrenabletooltip</source>
        <translation>HDR combines several exposures and lowers the frame rate.</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_pharmacodeonetrack</source>
        <translation>Pharmacode One Track</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_pharmacodetooltip</source>
        <translation>Pharmacode excludes the other one-dimensional codes.</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_pharmacodetwotrack</source>
        <translation>Pharmacode Two Track</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_quality1denable</source>
        <translation>1D Code Quality Evaluation</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_qualityenable</source>
        <translation>2D Code Quality Evaluation</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_qualityenabletooltip</source>
        <translation>Quality evaluation makes the reading of codes slower.</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_selftriggerperiod</source>
        <translation>Self Trigger Period</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_selftriggerperiodtooltip</source>
        <translation>The period should be longer than the exposure time and the time that an image takes to be processed.</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_tooltip</source>
        <translation>This parameter cannot be set during acquisition. Stop the acquisition first.</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_xmirror</source>
        <translation>Reverse X</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_ymirror</source>
        <translation>Reverse Y</translation>
    </message>
</context>
<context>
    <name>QFeatureDiff</name>
    <message>
        <source>lang_qfeaturediff_category</source>
        <translation>Category</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_currentvalue</source>
        <translation>On Device</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_featurediff</source>
        <translation>Differences</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_featurename</source>
        <translation>Feature</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_importcancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_importfeature</source>
        <translation>In File</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_importok</source>
        <translation>Import</translation>
    </message>
</context>
<context>
    <name>QFeatureDrawWidget</name>
    <message>
        <source>lang_qfeaturedrawwidget_batch</source>
        <translation>Batch</translation>
    </message>
    <message>
        <source>lang_qfeaturedrawwidget_draw</source>
        <translation>Draw</translation>
    </message>
    <message>
        <source>lang_qfeaturedrawwidget_edit</source>
        <translation>Edit</translation>
    </message>
</context>
<context>
    <name>QFeatureToolBar</name>
    <message>
        <source>lang_qfeaturetoolbar_expand</source>
        <translation>Expand All</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_featureexport</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_featureimport</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_featurerefresh</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_fileaccess</source>
        <translation>File Access</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_fold</source>
        <translation>Collapse All</translation>
    </message>
</context>
<context>
    <name>QFeatureTree</name>
    <message>
        <source>lang_qfeaturetree_changedfeatures</source>
        <translation>Changed: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_importcounts</source>
        <translation>Import: %1 values changed, %2 refused, %3 not carriable.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_importgrabbing</source>
        <translation>Features cannot be imported while the device grabs images.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_importreadonly</source>
        <translation>Features cannot be imported: the device is open read only.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_address</source>
        <translation>Addresses are not exported: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_command</source>
        <translation>Commands have no value: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_condition</source>
        <translation>The device does not offer these at present: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_excluded</source>
        <translation>Never part of a feature file: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_fewdigits</source>
        <translation>Six decimals are too few for the value: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_filetoolarge</source>
        <translation>The file is too large to be imported again%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_furtherwords</source>
        <translation>Only the first word of the register is carried: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_identity</source>
        <translation>Belongs to this one device: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_inexact</source>
        <translation>A number lost digits on the way: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_nolength</source>
        <translation>Not exported, the register has no length: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_notcarriable</source>
        <translation>Not carriable, the text is no number of this feature: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_nottaken</source>
        <translation>Written, but the device still has another value: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_notwritable</source>
        <translation>The register cannot be written now: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_presentselection</source>
        <translation>Exported for the present selection only: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_refused</source>
        <translation>Refused by the device: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_text</source>
        <translation>The text will not come back as it is: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_toolarge</source>
        <translation>Too large to be imported again: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_turnskipped</source>
        <translation>Not exported for these polling parameters: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_unreadable</source>
        <translation>Not exported, neither value nor registers can be read: %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_severaltimes</source>
        <translation>These stand in the file more than once, the last value holds: %1</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_allfeature</source>
        <translation>All Features</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_beginner</source>
        <translation>Beginner</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_cameraisrebooting</source>
        <translation>The camera is restarting.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_expert</source>
        <translation>Expert</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_failedsetval</source>
        <translation>The feature could not be set.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_favoriteadd</source>
        <translation>Add to Favorites</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_favoriteremove</source>
        <translation>Remove from Favorites</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_favoriteremoveall</source>
        <translation>Remove All Favorites</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_device</source>
        <translation>The device failed at %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_diskfull</source>
        <translation>The disk is full. %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_firmware</source>
        <translation>The device does not tell the version of its firmware.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_memory</source>
        <translation>There is not enough memory.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_open</source>
        <translation>The file cannot be opened. %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_stopped</source>
        <translation>The job was stopped.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_write</source>
        <translation>The file could not be written whole. %1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_featuredesc</source>
        <translation>Feature Description</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_featurestream</source>
        <translation>Feature files</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fileerror</source>
        <translation>The file cannot be read or is not a feature file.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fileversiondiff</source>
        <translation>The file has another version.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_ftpnamenotempty</source>
        <translation>The name of FTP pictures cannot be empty.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_guru</source>
        <translation>Guru</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_heldbypolling</source>
        <translation>&apos;%1&apos; was not written: while polling is on it belongs to the polling parameters.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_lineconfigerrortip</source>
        <translation>The line cannot be configured in the present state. Check the mode of the line and stop what uses it first.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadfeaturecompleted</source>
        <translation>The features were imported.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadfeaturefailed</source>
        <translation>The features could not be imported.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadfeatures</source>
        <translation>Import Features</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadingfeatures</source>
        <translation>Importing the features...</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_mismatch</source>
        <translation>The file belongs to another model or firmware.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nodefailedexec</source>
        <translation>Node &apos;%1&apos; was not executed. %2</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nodefailedsaveval</source>
        <translation>Node &apos;%1&apos;: value &apos;%2&apos; was not saved. %3</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nodevice</source>
        <translation>The device is not available.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nonumber</source>
        <translation>The value is not a number.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_paramerror</source>
        <translation>A parameter could not be written.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_parsingfile</source>
        <translation>Reading the feature file...</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_pleaseusecaution</source>
        <translation>This restores a user set and replaces the present parameters. Continue?</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_portconflicts</source>
        <translation>Port %1 was not set; another service may use it. %2</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_profinetmessage</source>
        <translation>PROFINET takes effect after the parameters have been saved and the device has been restarted.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_prompt</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_recommendedval</source>
        <translation>The recommended packet size for this connection is %1.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_return</source>
        <translation>Return</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeature</source>
        <translation>Export Features</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeaturefailed</source>
        <translation>The features could not be exported.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeatureing</source>
        <translation>Exporting the features...</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeaturesuccess</source>
        <translation>The features were exported.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_saveparamrestart</source>
        <translation>Save the parameters and restart the device for this setting to take effect.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_search</source>
        <translation>Search features</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_settingfeatures</source>
        <translation>Setting the feature...</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_suredeletecurcfg</source>
        <translation>Delete the current configuration?</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_surerecover</source>
        <translation>Restore the factory settings? All present parameters will be lost.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_surerecoverdefault</source>
        <translation>Restore the default parameters? Unsaved changes will be lost.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_threadisrun</source>
        <translation>An import or export is still running. Try again when it has ended.</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_updatefeature</source>
        <translation>Updating the features...</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_userlevel</source>
        <translation>User Level</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_xmlerror</source>
        <translation>The file holds no features.</translation>
    </message>
</context>
<context>
    <name>QFileAccessDialog</name>
    <message>
        <source>lang_qfileaccessdialog_badfile</source>
        <translation>This kind of file does not fit the chosen device file.</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_choosefile</source>
        <translation>Choose a File</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_deviceparameter</source>
        <translation>Device File</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_exportfailed</source>
        <translation>The file could not be exported.</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_exporting</source>
        <translation>Exporting</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_exportsuccess</source>
        <translation>The file was exported.</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_fileacceess</source>
        <translation>File Access</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_importfailed</source>
        <translation>The file could not be imported.</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_importing</source>
        <translation>Importing</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_importsuccess</source>
        <translation>The file was imported. Restart the device now for it to take effect?</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_prompt</source>
        <translation>Notice</translation>
    </message>
</context>
<context>
    <name>QLightingSelectorWidget</name>
    <message>
        <source>lang_qlightingselectorwidget_alloff</source>
        <translation>All Off</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_allon</source>
        <translation>All On</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_allturnon</source>
        <translation>All On</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_segmentoff</source>
        <translation>%1: off</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_segmenton</source>
        <translation>%1: on</translation>
    </message>
</context>
<context>
    <name>QPropertyLineEdit</name>
    <message>
        <source>lang_qpropertylineedit_notallowed</source>
        <translation>This text is not allowed here.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notdecimal</source>
        <translation>&quot;%1&quot; is not a whole number.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notfloat</source>
        <translation>&quot;%1&quot; is not a number. Use a point for decimals and nothing between thousands.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_nothex</source>
        <translation>&quot;%1&quot; is not a hexadecimal number of at most 64 bits.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notipv4</source>
        <translation>&quot;%1&quot; is not an IPv4 address such as 192.168.1.10.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notmac</source>
        <translation>&quot;%1&quot; is not a MAC address such as 00:11:22:AA:BB:CC.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notmask</source>
        <translation>&quot;%1&quot; is not a subnet mask such as 255.255.255.0.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_outofrange</source>
        <translation>The value must lie between %1 and %2.</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_toolong</source>
        <translation>The text takes %1 bytes; the device holds at most %2.</translation>
    </message>
</context>
<context>
    <name>VexaFeatureWidget</name>
    <message>
        <source>Algorithm Setting</source>
        <translation>Algorithm Setting</translation>
    </message>
    <message>
        <source>Communication Settings</source>
        <translation>Communication Settings</translation>
    </message>
    <message>
        <source>Config Management</source>
        <translation>Config Management</translation>
    </message>
    <message>
        <source>Data Processing</source>
        <translation>Data Processing</translation>
    </message>
    <message>
        <source>Device Connection</source>
        <translation>Device Connection</translation>
    </message>
    <message>
        <source>Feature Tree</source>
        <translation>Feature Tree</translation>
    </message>
    <message>
        <source>I/O Control Settings</source>
        <translation>I/O Control Settings</translation>
    </message>
    <message>
        <source>Image Settings</source>
        <translation>Image Settings</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistics</translation>
    </message>
</context>
<context>
    <name>VexaFileAccessThread</name>
    <message>
        <source>lang_vexafileaccessthread_sdkerror</source>
        <translation>Error: %1</translation>
    </message>
</context>
<context>
    <name>VexaPropertySpinBox</name>
    <message>
        <source>Min:%1; Max:%2; Step Value:%3</source>
        <translation>Min:%1; Max:%2; Step Value:%3</translation>
    </message>
</context>
<context>
    <name>VexaPropertyTreeDelegate</name>
    <message>
        <source>Set</source>
        <translation>Set</translation>
    </message>
</context>
<context>
    <name>VexaStringFormatWidget</name>
    <message>
        <source>2.4G Output Format</source>
        <translation>2.4G Output Format</translation>
    </message>
    <message>
        <source>Add Tag</source>
        <translation>Add Tag</translation>
    </message>
    <message>
        <source>Algo Time</source>
        <translation>Algo Time</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Angle</translation>
    </message>
    <message>
        <source>Angle of DMcode L Shaped Side</source>
        <translation>Angle of DMcode L Shaped Side</translation>
    </message>
    <message>
        <source>Angle of L Shaped Side</source>
        <translation>Angle of L Shaped Side</translation>
    </message>
    <message>
        <source>BaseOrReceiver Output Format</source>
        <translation>BaseOrReceiver Output Format</translation>
    </message>
    <message>
        <source>Carriage Return</source>
        <translation>Carriage Return</translation>
    </message>
    <message>
        <source>Carriage Return and Line Feed</source>
        <translation>Carriage Return and Line Feed</translation>
    </message>
    <message>
        <source>Code Central Coordinate</source>
        <translation>Code Central Coordinate</translation>
    </message>
    <message>
        <source>Code Content</source>
        <translation>Code Content</translation>
    </message>
    <message>
        <source>Code Number</source>
        <translation>Code Number</translation>
    </message>
    <message>
        <source>Code Quality Evaluation</source>
        <translation>Code Quality Evaluation</translation>
    </message>
    <message>
        <source>Code Score</source>
        <translation>Code Score</translation>
    </message>
    <message>
        <source>Code Sub Quality Evaluation</source>
        <translation>Code Sub Quality Evaluation</translation>
    </message>
    <message>
        <source>Code Type</source>
        <translation>Code Type</translation>
    </message>
    <message>
        <source>Code Vertex Coordinate</source>
        <translation>Code Vertex Coordinate</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>Day</translation>
    </message>
    <message>
        <source>Device ip</source>
        <translation>Device ip</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>EthernetIp Output Format</source>
        <translation>EthernetIp Output Format</translation>
    </message>
    <message>
        <source>FTP Picture Name Format</source>
        <translation>FTP Picture Name Format</translation>
    </message>
    <message>
        <source>FTP Result Content</source>
        <translation>FTP Result Content</translation>
    </message>
    <message>
        <source>FTP Upload Directory String</source>
        <translation>FTP Upload Directory String</translation>
    </message>
    <message>
        <source>Failed to set the feature value.</source>
        <translation>Failed to set the feature value.</translation>
    </message>
    <message>
        <source>Fins Output Format</source>
        <translation>Fins Output Format</translation>
    </message>
    <message>
        <source>Frame Code Time</source>
        <translation>Frame Code Time</translation>
    </message>
    <message>
        <source>Frame No.</source>
        <translation>Frame No.</translation>
    </message>
    <message>
        <source>Frame Time</source>
        <translation>Frame Time</translation>
    </message>
    <message>
        <source>HID Output Format</source>
        <translation>HID Output Format</translation>
    </message>
    <message>
        <source>Horizontal Tab</source>
        <translation>Horizontal Tab</translation>
    </message>
    <message>
        <source>Incremental Value</source>
        <translation>Incremental Value</translation>
    </message>
    <message>
        <source>L_Side Output Text</source>
        <translation>L_Side Output Text</translation>
    </message>
    <message>
        <source>Line Feed</source>
        <translation>Line Feed</translation>
    </message>
    <message>
        <source>Local Picture Name Format</source>
        <translation>Local Picture Name Format</translation>
    </message>
    <message>
        <source>MELSEC Output Format</source>
        <translation>MELSEC Output Format</translation>
    </message>
    <message>
        <source>Mirror Mark</source>
        <translation>Mirror Mark</translation>
    </message>
    <message>
        <source>ModBus Output Format</source>
        <translation>ModBus Output Format</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Month</translation>
    </message>
    <message>
        <source>Node &apos;%1&apos;:failed to save value &apos;%2&apos;. %3</source>
        <translation>Node &apos;%1&apos;:failed to save value &apos;%2&apos;. %3</translation>
    </message>
    <message>
        <source>OK/NG</source>
        <translation>OK/NG</translation>
    </message>
    <message>
        <source>Polling Parameter</source>
        <translation>Polling Parameter</translation>
    </message>
    <message>
        <source>Profinet Output Format</source>
        <translation>Profinet Output Format</translation>
    </message>
    <message>
        <source>ROI No.</source>
        <translation>ROI No.</translation>
    </message>
    <message>
        <source>Read Bar Result</source>
        <translation>Read Bar Result</translation>
    </message>
    <message>
        <source>SLMP Output Format</source>
        <translation>SLMP Output Format</translation>
    </message>
    <message>
        <source>Serial Output Format</source>
        <translation>Serial Output Format</translation>
    </message>
    <message>
        <source>Serial Trigger End String</source>
        <translation>Serial Trigger End String</translation>
    </message>
    <message>
        <source>Serial Trigger Start String</source>
        <translation>Serial Trigger Start String</translation>
    </message>
    <message>
        <source>Special characters exist in the setting content, please modify and try again!</source>
        <translation>Special characters exist in the setting content, please modify and try again!</translation>
    </message>
    <message>
        <source>Station Name</source>
        <translation>Station Name</translation>
    </message>
    <message>
        <source>TCP Output Format</source>
        <translation>TCP Output Format</translation>
    </message>
    <message>
        <source>TCP Server Output Format</source>
        <translation>TCP Server Output Format</translation>
    </message>
    <message>
        <source>Tcp Client End Trigger Hex</source>
        <translation>Tcp Client End Trigger Hex</translation>
    </message>
    <message>
        <source>Tcp Client Start Trigger Hex</source>
        <translation>Tcp Client Start Trigger Hex</translation>
    </message>
    <message>
        <source>Tcp Trigger End String</source>
        <translation>Tcp Trigger End String</translation>
    </message>
    <message>
        <source>Tcp Trigger Start String</source>
        <translation>Tcp Trigger Start String</translation>
    </message>
    <message>
        <source>The FTP image name cannot be empty. Please reset it!</source>
        <translation>The FTP image name cannot be empty. Please reset it!</translation>
    </message>
    <message>
        <source>Trigger No.</source>
        <translation>Trigger No.</translation>
    </message>
    <message>
        <source>Trigger Start Time</source>
        <translation>Trigger Start Time</translation>
    </message>
    <message>
        <source>UDP Output Format</source>
        <translation>UDP Output Format</translation>
    </message>
    <message>
        <source>USB Output Format</source>
        <translation>USB Output Format</translation>
    </message>
    <message>
        <source>Udp Trigger End String</source>
        <translation>Udp Trigger End String</translation>
    </message>
    <message>
        <source>Udp Trigger Start String</source>
        <translation>Udp Trigger Start String</translation>
    </message>
    <message>
        <source>Vertical Tab</source>
        <translation>Vertical Tab</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Year</translation>
    </message>
    <message>
        <source>frame_time</source>
        <translation>frame_time</translation>
    </message>
    <message>
        <source>image</source>
        <translation>image</translation>
    </message>
    <message>
        <source>read bar result</source>
        <translation>read bar result</translation>
    </message>
</context>
<context>
    <name>VexaScreenSelectWidget</name>
    <message>
        <source>lang_vexascreenselectwidget_codenumber</source>
        <translation>Number of codes</translation>
    </message>
    <message>
        <source>lang_vexascreenselectwidget_codescore</source>
        <translation>Code score</translation>
    </message>
    <message>
        <source>lang_vexascreenselectwidget_decodetime</source>
        <translation>Decoding time</translation>
    </message>
</context>
</TS>
