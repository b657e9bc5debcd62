import QtQuick
import QtWebEngine

// Refuses all that a page may ask of the machine and the visitor, and asks the page's delegate where it may go.
WebEngineView {
    id: root

    required property QtObject page
    // Of the history, before the page is in it.
    property int entriesBefore: 0

    function open(address: url, pageScript: string, ownScript: string): void {
        userScripts.collection = [
            {
                name: "page",
                sourceCode: pageScript,
                worldId: WebEngineScript.MainWorld,
                injectionPoint: WebEngineScript.DocumentCreation,
                runsOnSubFrames: false
            },
            {
                name: "own",
                sourceCode: ownScript,
                worldId: WebEngineScript.ApplicationWorld,
                injectionPoint: WebEngineScript.DocumentCreation,
                runsOnSubFrames: false
            }
        ];
        entriesBefore = history.items.rowCount();
        url = address;
    }

    function mayOpen(request): bool {
        const type = request.navigationType;
        const isRedirect = type === WebEngineNavigationRequest.RedirectNavigation;
        // A page that sends itself on has come to the history by then.
        if (request.isMainFrame && isRedirect && history.items.rowCount() === entriesBefore)
            return page.mayFollow(request.url);
        return page.mayOpen(request.url, request.isMainFrame && type === WebEngineNavigationRequest.TypedNavigation);
    }

    function evaluate(script: string, id: int): void {
        runJavaScript(script, WebEngineScript.ApplicationWorld, result => page?.evaluated(id, result));
    }

    function chooseFiles(request): void {
        const isSeveral = request.mode === FileDialogRequest.FileModeOpenMultiple;
        const isOne = request.mode === FileDialogRequest.FileModeOpen;
        if (!(isOne || isSeveral) || choice.chooser || !page?.mayChooseFiles()) {
            request.dialogReject();
            return;
        }
        // Only here: a host that allows no files needs no such dialog.
        const component = Qt.createComponent("FileChooser.qml");
        const chooser = component.createObject(root, { fileMode: isSeveral ? 1 : 0 });
        if (!chooser) {
            console.warn(component.errorString());
            request.dialogReject();
            return;
        }
        choice.request = request;
        choice.chooser = chooser;
        page.choosingChanged(true);
        chooser.answered.connect(choice.answer);
        chooser.open();
    }

    // What a page has not painted, or not yet, does not let the screen behind shine through.
    Rectangle {
        objectName: "ground"
        z: -1
        anchors.fill: parent
        color: "white"
    }

    QtObject {
        id: choice

        property var request: null
        property var chooser: null

        function answer(files): void {
            if (files.length > 0) request.dialogAccept(files.map(file => page.pathOf(file)));
            else request.dialogReject();
            request = null;
            const dialog = chooser;
            chooser = null;
            dialog.answered.disconnect(answer);
            dialog.close();
            dialog.destroy();
            page.choosingChanged(false);
        }
    }

    anchors.fill: parent
    focus: true
    webChannelWorld: WebEngineScript.ApplicationWorld

    profile: WebEngineProfile {
        offTheRecord: true
        httpCacheType: WebEngineProfile.MemoryHttpCache
        persistentCookiesPolicy: WebEngineProfile.NoPersistentCookies
        spellCheckEnabled: false
        onDownloadRequested: download => download.cancel()
    }

    settings.allowWindowActivationFromJavaScript: false
    settings.autoLoadIconsForPage: false
    settings.dnsPrefetchEnabled: false
    settings.errorPageEnabled: false
    settings.focusOnNavigationEnabled: false
    settings.fullScreenSupportEnabled: false
    settings.hyperlinkAuditingEnabled: false
    settings.javascriptCanAccessClipboard: false
    settings.javascriptCanOpenWindows: false
    settings.javascriptCanPaste: false
    settings.localContentCanAccessFileUrls: false
    settings.localContentCanAccessRemoteUrls: false
    settings.navigateOnDropEnabled: false
    settings.pdfViewerEnabled: false
    settings.pluginsEnabled: false
    settings.screenCaptureEnabled: false
    settings.unknownUrlSchemePolicy: WebEngineSettings.DisallowUnknownUrlSchemes

    onNavigationRequested: request => {
        if (!page || !mayOpen(request)) request.reject();
    }
    onNewWindowRequested: request => page?.mayOpen(request.requestedUrl, false)
    onLoadingChanged: info => page?.loadingChanged(info.status, info.errorDomain, info.errorCode, info.errorString)
    onRenderProcessTerminated: page?.terminated()

    onAuthenticationDialogRequested: request => {
        request.accepted = true;
        request.dialogReject();
    }
    onCertificateError: error => error.rejectCertificate()
    onColorDialogRequested: request => {
        request.accepted = true;
        request.dialogReject();
    }
    onContextMenuRequested: request => request.accepted = true
    onFeaturePermissionRequested: (origin, feature) => grantFeaturePermission(origin, feature, false)
    onFileDialogRequested: request => {
        request.accepted = true;
        chooseFiles(request);
    }
    onFileSystemAccessRequested: request => request.reject()
    onFullScreenRequested: request => request.reject()
    // A page must not fill the host's log.
    onJavaScriptConsoleMessage: {}
    onJavaScriptDialogRequested: request => {
        request.accepted = true;
        // Only the question whether to stay, which would keep the library from loading another page.
        if (request.type === JavaScriptDialogRequest.DialogTypeBeforeUnload) request.dialogAccept();
        else request.dialogReject();
    }
    onQuotaRequested: request => request.reject()
    onRegisterProtocolHandlerRequested: request => request.reject()
    onSelectClientCertificate: selection => selection.selectNone()
    onTooltipRequested: request => request.accepted = true
    onTouchSelectionMenuRequested: request => request.accepted = true
}
