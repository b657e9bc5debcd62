import QtQuick
import QtWebEngine

// Refuses all that a page may ask of the machine and the visitor, and asks the page's delegate where it may go.
WebEngineView {
    id: root

    required property QtObject page

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
        url = address;
    }

    function evaluate(script: string, id: int): void {
        runJavaScript(script, WebEngineScript.ApplicationWorld, result => page?.evaluated(id, result));
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
        const isTyped = request.navigationType === WebEngineNavigationRequest.TypedNavigation;
        if (!page?.mayOpen(request.url, request.isMainFrame && isTyped)) request.reject();
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
        request.dialogReject();
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
