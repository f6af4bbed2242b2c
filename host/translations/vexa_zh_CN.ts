<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>ControlKit</name>
    <message>
        <source>lang_controlkit_cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>lang_controlkit_close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>lang_controlkit_date</source>
        <translation>日期</translation>
    </message>
    <message>
        <source>lang_controlkit_maximise</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>lang_controlkit_minimise</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>lang_controlkit_no</source>
        <translation>否</translation>
    </message>
    <message>
        <source>lang_controlkit_ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>lang_controlkit_openfolder</source>
        <translation>打开文件夹</translation>
    </message>
    <message>
        <source>lang_controlkit_prompt</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>lang_controlkit_search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>lang_controlkit_time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>lang_controlkit_yes</source>
        <translation>是</translation>
    </message>
</context>
<context>
    <name>QCustomReverseHintWidget</name>
    <message>
        <source>lang_qcustomreversehintwidget_codetrigenable</source>
        <translation>条码触发</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_codetrigenabletooltip</source>
        <translation>开启后由读到的条码开始或停止触发。</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_hdrenable</source>
        <translation>HDR</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_hdrenabletooltip</source>
        <translation>HDR 会合成多次曝光并降低帧率。</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_pharmacodeonetrack</source>
        <translation>Pharmacode One Track码</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_pharmacodetooltip</source>
        <translation>Pharmacode码与其他一维码互斥</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_pharmacodetwotrack</source>
        <translation>Pharmacode Two Track码</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_quality1denable</source>
        <translation>一维码打码评级</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_qualityenable</source>
        <translation>二维码打码评级</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_qualityenabletooltip</source>
        <translation>开启打码评级会增加读码耗时。</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_selftriggerperiod</source>
        <translation>自触发周期</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_selftriggerperiodtooltip</source>
        <translation>周期应大于曝光时间与图像处理时间之和。</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_tooltip</source>
        <translation>图像采集状态下无法设置此参数，请先停止采集。</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_xmirror</source>
        <translation>X镜像</translation>
    </message>
    <message>
        <source>lang_qcustomreversehintwidget_ymirror</source>
        <translation>Y镜像</translation>
    </message>
</context>
<context>
    <name>QFeatureDiff</name>
    <message>
        <source>lang_qfeaturediff_category</source>
        <translation>类别</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_currentvalue</source>
        <translation>当前值</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_featurediff</source>
        <translation>属性差异</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_featurename</source>
        <translation>属性名称</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_importcancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_importfeature</source>
        <translation>文件中的值</translation>
    </message>
    <message>
        <source>lang_qfeaturediff_importok</source>
        <translation>导入</translation>
    </message>
</context>
<context>
    <name>QFeatureDrawWidget</name>
    <message>
        <source>lang_qfeaturedrawwidget_batch</source>
        <translation>批量</translation>
    </message>
    <message>
        <source>lang_qfeaturedrawwidget_draw</source>
        <translation>绘制</translation>
    </message>
    <message>
        <source>lang_qfeaturedrawwidget_edit</source>
        <translation>编辑</translation>
    </message>
</context>
<context>
    <name>QFeatureToolBar</name>
    <message>
        <source>lang_qfeaturetoolbar_expand</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_featureexport</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_featureimport</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_featurerefresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_fileaccess</source>
        <translation>文件访问</translation>
    </message>
    <message>
        <source>lang_qfeaturetoolbar_fold</source>
        <translation>全部折叠</translation>
    </message>
</context>
<context>
    <name>QFeatureTree</name>
    <message>
        <source>lang_qfeaturetree_changedfeatures</source>
        <translation>已更改：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_importcounts</source>
        <translation>导入：更改 %1 个值，拒绝 %2 个，无法导入 %3 个。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_importgrabbing</source>
        <translation>采集图像时无法导入属性。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_importreadonly</source>
        <translation>设备以只读方式打开，无法导入属性。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_address</source>
        <translation>地址不导出：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_command</source>
        <translation>命令没有值：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_condition</source>
        <translation>设备当前不提供：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_excluded</source>
        <translation>不属于属性文件：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_fewdigits</source>
        <translation>六位小数不足以表示该值：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_filetoolarge</source>
        <translation>文件过大，无法再次导入%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_furtherwords</source>
        <translation>仅保存寄存器的首字：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_identity</source>
        <translation>仅属于本设备：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_inexact</source>
        <translation>数值丢失了精度：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_nolength</source>
        <translation>未导出，寄存器长度为零：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_notcarriable</source>
        <translation>无法导入，文本不是该属性的数值：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_nottaken</source>
        <translation>已写入，但设备的值仍不同：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_notwritable</source>
        <translation>寄存器当前不可写：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_presentselection</source>
        <translation>仅导出当前选择的值：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_refused</source>
        <translation>设备拒绝：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_text</source>
        <translation>文本无法原样恢复：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_toolarge</source>
        <translation>数值过大，无法再次导入：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_turnskipped</source>
        <translation>未导出以下轮询参数：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_note_unreadable</source>
        <translation>未导出，值和寄存器均无法读取：%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_severaltimes</source>
        <translation>文件中多次出现，以最后的值为准：%1</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_allfeature</source>
        <translation>全部属性</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_beginner</source>
        <translation>初学者</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_cameraisrebooting</source>
        <translation>相机正在重启。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_expert</source>
        <translation>专家</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_failedsetval</source>
        <translation>属性设置失败。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_favoriteadd</source>
        <translation>添加到收藏</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_favoriteremove</source>
        <translation>从收藏中移除</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_favoriteremoveall</source>
        <translation>移除全部收藏</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_device</source>
        <translation>设备访问失败:%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_diskfull</source>
        <translation>磁盘已满。%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_firmware</source>
        <translation>无法读取设备的固件版本。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_memory</source>
        <translation>内存不足。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_open</source>
        <translation>无法打开文件。%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_stopped</source>
        <translation>任务已停止。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fail_write</source>
        <translation>文件未能完整写入。%1</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_featuredesc</source>
        <translation>属性说明</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_featurestream</source>
        <translation>属性文件</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fileerror</source>
        <translation>文件无法读取或不是属性文件。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_fileversiondiff</source>
        <translation>文件版本不一致。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_ftpnamenotempty</source>
        <translation>FTP 图片名称不能为空。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_guru</source>
        <translation>大师</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_heldbypolling</source>
        <translation>“%1”未写入：轮询开启时，该节点由轮询参数控制。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_lineconfigerrortip</source>
        <translation>当前状态下无法配置该线路，请检查线路模式并先停止使用该线路的功能。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadfeaturecompleted</source>
        <translation>属性导入完成。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadfeaturefailed</source>
        <translation>属性导入失败。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadfeatures</source>
        <translation>导入属性</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_loadingfeatures</source>
        <translation>正在导入属性…</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_mismatch</source>
        <translation>文件与设备的型号或固件不匹配。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nodefailedexec</source>
        <translation>节点“%1”执行失败。%2</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nodefailedsaveval</source>
        <translation>节点“%1”：值“%2”保存失败。%3</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nodevice</source>
        <translation>设备不可用。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_nonumber</source>
        <translation>该值不是数字。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_paramerror</source>
        <translation>参数写入失败。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_parsingfile</source>
        <translation>正在解析属性文件…</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_pleaseusecaution</source>
        <translation>此操作将恢复用户集并替换当前参数，是否继续？</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_portconflicts</source>
        <translation>端口 %1 设置失败，可能已被其他服务占用。%2</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_profinetmessage</source>
        <translation>保存参数并重启设备后，PROFINET 才会生效。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_prompt</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_recommendedval</source>
        <translation>当前连接的推荐包大小为 %1。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_return</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeature</source>
        <translation>导出属性</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeaturefailed</source>
        <translation>属性导出失败。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeatureing</source>
        <translation>正在导出属性…</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_savefeaturesuccess</source>
        <translation>属性导出成功。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_saveparamrestart</source>
        <translation>请保存参数并重启设备，使设置生效。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_search</source>
        <translation>搜索属性</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_settingfeatures</source>
        <translation>正在设置属性…</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_suredeletecurcfg</source>
        <translation>确定删除当前配置吗？</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_surerecover</source>
        <translation>确定恢复出厂设置吗？当前参数将全部丢失。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_surerecoverdefault</source>
        <translation>确定恢复默认参数吗？未保存的更改将丢失。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_threadisrun</source>
        <translation>导入或导出仍在进行，请在结束后重试。</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_updatefeature</source>
        <translation>正在更新属性…</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_userlevel</source>
        <translation>用户级别</translation>
    </message>
    <message>
        <source>lang_qfeaturetree_xmlerror</source>
        <translation>文件中没有属性。</translation>
    </message>
</context>
<context>
    <name>QFileAccessDialog</name>
    <message>
        <source>lang_qfileaccessdialog_badfile</source>
        <translation>文件类型与所选设备文件不符。</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_choosefile</source>
        <translation>选择文件</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_deviceparameter</source>
        <translation>设备文件</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_exportfailed</source>
        <translation>文件导出失败。</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_exporting</source>
        <translation>正在导出</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_exportsuccess</source>
        <translation>文件导出成功。</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_fileacceess</source>
        <translation>文件访问</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_importfailed</source>
        <translation>文件导入失败。</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_importing</source>
        <translation>正在导入</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_importsuccess</source>
        <translation>文件导入成功，重启设备后生效。是否立即重启？</translation>
    </message>
    <message>
        <source>lang_qfileaccessdialog_prompt</source>
        <translation>提示</translation>
    </message>
</context>
<context>
    <name>QLightingSelectorWidget</name>
    <message>
        <source>lang_qlightingselectorwidget_alloff</source>
        <translation>全灭</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_allon</source>
        <translation>全亮</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_allturnon</source>
        <translation>全部点亮</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_segmentoff</source>
        <translation>%1：灭</translation>
    </message>
    <message>
        <source>lang_qlightingselectorwidget_segmenton</source>
        <translation>%1：亮</translation>
    </message>
</context>
<context>
    <name>QPropertyLineEdit</name>
    <message>
        <source>lang_qpropertylineedit_notallowed</source>
        <translation>此处不允许该文本。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notdecimal</source>
        <translation>“%1”不是整数。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notfloat</source>
        <translation>“%1”不是数值。请用小数点，且不要使用千位分隔符。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_nothex</source>
        <translation>“%1”不是 64 位以内的十六进制数。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notipv4</source>
        <translation>“%1”不是 IPv4 地址，例如 192.168.1.10。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notmac</source>
        <translation>“%1”不是 MAC 地址，例如 00:11:22:AA:BB:CC。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_notmask</source>
        <translation>“%1”不是子网掩码，例如 255.255.255.0。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_outofrange</source>
        <translation>数值必须在 %1 与 %2 之间。</translation>
    </message>
    <message>
        <source>lang_qpropertylineedit_toolong</source>
        <translation>文本占 %1 字节，设备最多保存 %2 字节。</translation>
    </message>
</context>
<context>
    <name>VexaFeatureWidget</name>
    <message>
        <source>Algorithm Setting</source>
        <translation>算法设置</translation>
    </message>
    <message>
        <source>Communication Settings</source>
        <translation>通信设置</translation>
    </message>
    <message>
        <source>Config Management</source>
        <translation>配置管理</translation>
    </message>
    <message>
        <source>Data Processing</source>
        <translation>数据处理</translation>
    </message>
    <message>
        <source>Device Connection</source>
        <translation>设备连接</translation>
    </message>
    <message>
        <source>Feature Tree</source>
        <translation>属性树</translation>
    </message>
    <message>
        <source>I/O Control Settings</source>
        <translation>I/O 控制设置</translation>
    </message>
    <message>
        <source>Image Settings</source>
        <translation>图像设置</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>统计信息</translation>
    </message>
</context>
<context>
    <name>VexaFileAccessThread</name>
    <message>
        <source>lang_vexafileaccessthread_sdkerror</source>
        <translation>错误：%1</translation>
    </message>
</context>
<context>
    <name>VexaPropertySpinBox</name>
    <message>
        <source>Min:%1; Max:%2; Step Value:%3</source>
        <translation>最小值:%1; 最大值:%2; 步进:%3</translation>
    </message>
</context>
<context>
    <name>VexaPropertyTreeDelegate</name>
    <message>
        <source>Set</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>VexaStringFormatWidget</name>
    <message>
        <source>2.4G Output Format</source>
        <translation>2.4G 输出格式</translation>
    </message>
    <message>
        <source>Add Tag</source>
        <translation>添加标签</translation>
    </message>
    <message>
        <source>Algo Time</source>
        <translation>算法耗时</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>角度</translation>
    </message>
    <message>
        <source>Angle of DMcode L Shaped Side</source>
        <translation>DM码 L边角度</translation>
    </message>
    <message>
        <source>Angle of L Shaped Side</source>
        <translation>L边角度</translation>
    </message>
    <message>
        <source>BaseOrReceiver Output Format</source>
        <translation>底座或接收器输出格式</translation>
    </message>
    <message>
        <source>Carriage Return</source>
        <translation>回车</translation>
    </message>
    <message>
        <source>Carriage Return and Line Feed</source>
        <translation>回车和换行</translation>
    </message>
    <message>
        <source>Code Central Coordinate</source>
        <translation>条码中心坐标</translation>
    </message>
    <message>
        <source>Code Content</source>
        <translation>条码内容</translation>
    </message>
    <message>
        <source>Code Number</source>
        <translation>条码数量</translation>
    </message>
    <message>
        <source>Code Quality Evaluation</source>
        <translation>打码评级</translation>
    </message>
    <message>
        <source>Code Score</source>
        <translation>读码评分</translation>
    </message>
    <message>
        <source>Code Sub Quality Evaluation</source>
        <translation>打码评级子项</translation>
    </message>
    <message>
        <source>Code Type</source>
        <translation>条码类型</translation>
    </message>
    <message>
        <source>Code Vertex Coordinate</source>
        <translation>条码顶点坐标</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>日</translation>
    </message>
    <message>
        <source>Device ip</source>
        <translation>IP地址</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>EthernetIp Output Format</source>
        <translation>EthernetIp 输出格式</translation>
    </message>
    <message>
        <source>FTP Picture Name Format</source>
        <translation>FTP 图片名称格式</translation>
    </message>
    <message>
        <source>FTP Result Content</source>
        <translation>FTP 结果内容</translation>
    </message>
    <message>
        <source>FTP Upload Directory String</source>
        <translation>FTP 上传目录字符串</translation>
    </message>
    <message>
        <source>Failed to set the feature value.</source>
        <translation>设置属性值失败。</translation>
    </message>
    <message>
        <source>Fins Output Format</source>
        <translation>Fins 输出格式</translation>
    </message>
    <message>
        <source>Frame Code Time</source>
        <translation>读图识码时间</translation>
    </message>
    <message>
        <source>Frame No.</source>
        <translation>帧号</translation>
    </message>
    <message>
        <source>Frame Time</source>
        <translation>图像帧时间</translation>
    </message>
    <message>
        <source>HID Output Format</source>
        <translation>HID 输出格式</translation>
    </message>
    <message>
        <source>Horizontal Tab</source>
        <translation>水平制表符</translation>
    </message>
    <message>
        <source>Incremental Value</source>
        <translation>递增值</translation>
    </message>
    <message>
        <source>L_Side Output Text</source>
        <translation>DM码L边角度区域文本</translation>
    </message>
    <message>
        <source>Line Feed</source>
        <translation>换行</translation>
    </message>
    <message>
        <source>Local Picture Name Format</source>
        <translation>本地图片名称格式</translation>
    </message>
    <message>
        <source>MELSEC Output Format</source>
        <translation>MELSEC 输出格式</translation>
    </message>
    <message>
        <source>Mirror Mark</source>
        <translation>镜像标记</translation>
    </message>
    <message>
        <source>ModBus Output Format</source>
        <translation>ModBus 输出格式</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>月</translation>
    </message>
    <message>
        <source>Node &apos;%1&apos;:failed to save value &apos;%2&apos;. %3</source>
        <translation>节点“%1”：值“%2”保存失败。%3</translation>
    </message>
    <message>
        <source>OK/NG</source>
        <translation>OK/NG</translation>
    </message>
    <message>
        <source>Polling Parameter</source>
        <translation>轮询参数信号</translation>
    </message>
    <message>
        <source>Profinet Output Format</source>
        <translation>Profinet 输出格式</translation>
    </message>
    <message>
        <source>ROI No.</source>
        <translation>ROI号</translation>
    </message>
    <message>
        <source>Read Bar Result</source>
        <translation>读码结果</translation>
    </message>
    <message>
        <source>SLMP Output Format</source>
        <translation>SLMP 输出格式</translation>
    </message>
    <message>
        <source>Serial Output Format</source>
        <translation>串口输出格式</translation>
    </message>
    <message>
        <source>Serial Trigger End String</source>
        <translation>串口触发结束字符串</translation>
    </message>
    <message>
        <source>Serial Trigger Start String</source>
        <translation>串口触发开始字符串</translation>
    </message>
    <message>
        <source>Special characters exist in the setting content, please modify and try again!</source>
        <translation>设置内容中存在特殊字符，请修改后重试！</translation>
    </message>
    <message>
        <source>Station Name</source>
        <translation>站名</translation>
    </message>
    <message>
        <source>TCP Output Format</source>
        <translation>TCP 输出格式</translation>
    </message>
    <message>
        <source>TCP Server Output Format</source>
        <translation>TCP 服务器输出格式</translation>
    </message>
    <message>
        <source>Tcp Client End Trigger Hex</source>
        <translation>TCP 客户端触发结束十六进制</translation>
    </message>
    <message>
        <source>Tcp Client Start Trigger Hex</source>
        <translation>TCP 客户端触发开始十六进制</translation>
    </message>
    <message>
        <source>Tcp Trigger End String</source>
        <translation>TCP 触发结束字符串</translation>
    </message>
    <message>
        <source>Tcp Trigger Start String</source>
        <translation>TCP 触发开始字符串</translation>
    </message>
    <message>
        <source>The FTP image name cannot be empty. Please reset it!</source>
        <translation>FTP 图片名称不能为空，请重新设置！</translation>
    </message>
    <message>
        <source>Trigger No.</source>
        <translation>触发号</translation>
    </message>
    <message>
        <source>Trigger Start Time</source>
        <translation>触发开始时间</translation>
    </message>
    <message>
        <source>UDP Output Format</source>
        <translation>UDP 输出格式</translation>
    </message>
    <message>
        <source>USB Output Format</source>
        <translation>USB 输出格式</translation>
    </message>
    <message>
        <source>Udp Trigger End String</source>
        <translation>UDP 触发结束字符串</translation>
    </message>
    <message>
        <source>Udp Trigger Start String</source>
        <translation>UDP 触发开始字符串</translation>
    </message>
    <message>
        <source>Vertical Tab</source>
        <translation>垂直制表符</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>年</translation>
    </message>
    <message>
        <source>frame_time</source>
        <translation>帧时间</translation>
    </message>
    <message>
        <source>image</source>
        <translation>图像</translation>
    </message>
    <message>
        <source>read bar result</source>
        <translation>读码结果</translation>
    </message>
</context>
<context>
    <name>VexaScreenSelectWidget</name>
    <message>
        <source>lang_vexascreenselectwidget_codenumber</source>
        <translation>条码数量</translation>
    </message>
    <message>
        <source>lang_vexascreenselectwidget_codescore</source>
        <translation>读码评分</translation>
    </message>
    <message>
        <source>lang_vexascreenselectwidget_decodetime</source>
        <translation>解码耗时</translation>
    </message>
</context>
</TS>
